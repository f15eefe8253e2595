#pragma once

namespace zarvy {

// A file descriptor that is readable while it has been raised and not lowered since: it wakes an
// event loop from any thread, and from a signal handler.
class WakeUp {
 public:
  // Throws std::system_error where the process has no file descriptor left.
  WakeUp();
  ~WakeUp();

  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;

  [[nodiscard]] int descriptor() const { return m_descriptor; }
  void raise() const;
  void lower() const;

 private:
  int m_descriptor;
};

}  // namespace zarvy
