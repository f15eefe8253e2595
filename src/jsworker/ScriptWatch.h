#pragma once

#include <atomic>

namespace zarvy {

// Ends the process, at once and from a thread of its own, when the program at the other end of the
// socket has gone, when a running script has made the process larger than 256 MiB, or when scripts
// have left it larger than 128 MiB. While no script runs the thread does not wake up, but once
// where much was left.
class ScriptWatch {
 public:
  // Throws std::system_error where the process cannot watch itself. Once made it stays.
  explicit ScriptWatch(int socket);

  ScriptWatch(const ScriptWatch&) = delete;
  ScriptWatch& operator=(const ScriptWatch&) = delete;

  void scriptBegins();
  // Looks once more: a short script may have grown the process between two looks.
  void scriptEnds();

  // No script runs, and the process is larger than it may stay.
  [[nodiscard]] bool isLeftLarge() const;

  // Ends the process in a second where it is still as large then and no script has begun. Memory
  // that the engine has given up goes back to the system that much later.
  void endSoonIfLeftLarge();

 private:
  void watch(int socket) const;
  void endIfTooLarge() const;
  [[nodiscard]] unsigned long long residentMemory() const;

  const int m_timer;   // a timerfd, armed while a script runs and once after it
  const int m_memory;  // the kernel's account of the process's memory, open
  std::atomic<unsigned long long> m_limit;  // bytes; what endIfTooLarge() compares with
};

}  // namespace zarvy
