#pragma once

namespace zarvy {

// Ends the process, at once and from a thread of its own, when the program at the other end of the
// socket is gone, when a running script has made the process larger than 256 MiB, or when scripts
// have left it larger than 128 MiB and nothing frees that. While no script runs the thread wakes up
// only where much was left, once.
class ScriptWatch {
 public:
  // Throws std::system_error where the process cannot watch itself. Once made it stays.
  explicit ScriptWatch(int socket);

  ScriptWatch(const ScriptWatch&) = delete;
  ScriptWatch& operator=(const ScriptWatch&) = delete;

  void scriptBegins() const;
  // Looks once more: a short script may have grown the process between two looks.
  void scriptEnds() const;

  // No script runs, and the process is larger than it may stay.
  [[nodiscard]] bool isLeftLarge() const;

  // Ends the process in five seconds where it is still as large then and no script has begun.
  // Memory that the engine has freed goes back to the system some time later.
  void endSoonIfLeftLarge() const;

 private:
  void watch(int socket) const;
  void endIfTooLarge() const;
  void endIfLeftLarge(int socket) const;
  [[nodiscard]] unsigned long long residentMemory() const;

  const int m_timer;       // a timerfd, armed while a script runs
  const int m_laterTimer;  // the same, after scripts that have left much
  const int m_memory;      // the kernel's account of the process's memory, open
};

}  // namespace zarvy
