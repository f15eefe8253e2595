#pragma once

namespace zarvy {

// Ends the process, at once and from a thread of its own, when the program at the other end of the
// socket has gone, or when a running script has made the process too large. While no script runs
// the thread does not wake up.
class ScriptWatch {
 public:
  // Throws std::system_error where the process cannot watch itself. Once made it stays.
  explicit ScriptWatch(int socket);

  ScriptWatch(const ScriptWatch&) = delete;
  ScriptWatch& operator=(const ScriptWatch&) = delete;

  void scriptBegins() const;
  // Looks once more: a short script may have grown the process between two looks.
  void scriptEnds() const;

 private:
  void watch(int socket) const;
  void endIfTooLarge() const;

  const int m_timer;   // a timerfd, armed while a script runs
  const int m_memory;  // the kernel's account of the process's memory, open
};

}  // namespace zarvy
