#pragma once

namespace zarvy {

// A file descriptor that is readable while it has been raised and not lowered since: it wakes an
// event loop from any thread, and from a signal handler.
class EventFd {
 public:
  // Throws std::system_error where the process has no file descriptor left.
  EventFd();
  ~EventFd();

  EventFd(const EventFd&) = delete;
  EventFd& operator=(const EventFd&) = delete;

  [[nodiscard]] int descriptor() const { return m_descriptor; }
  void raise() const;
  void lower() const;

 private:
  int m_descriptor;
};

}  // namespace zarvy
