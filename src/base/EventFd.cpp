#include "base/EventFd.h"

#include <cerrno>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace zarvy {

EventFd::EventFd() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (m_descriptor < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

EventFd::~EventFd() {
  ::close(m_descriptor);
}

void EventFd::raise() const {
  ::eventfd_write(m_descriptor, 1);
}

void EventFd::lower() const {
  eventfd_t count = 0;
  ::eventfd_read(m_descriptor, &count);
}

}  // namespace zarvy
