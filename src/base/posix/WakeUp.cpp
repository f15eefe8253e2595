#include "base/posix/WakeUp.h"

#include <cerrno>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace zarvy {

WakeUp::WakeUp() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (m_descriptor < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

WakeUp::~WakeUp() {
  ::close(m_descriptor);
}

void WakeUp::raise() const {
  ::eventfd_write(m_descriptor, 1);
}

void WakeUp::lower() const {
  eventfd_t count = 0;
  ::eventfd_read(m_descriptor, &count);
}

}  // namespace zarvy
