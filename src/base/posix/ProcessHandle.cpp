#include "base/posix/ProcessHandle.h"

#include <cerrno>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "base/posix/Waiting.h"

namespace zarvy {

namespace {

// Not by the C library's function, which its header of 2.36 hides from C++.
int openProcess(pid_t process) {
  return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

}  // namespace

ProcessHandle::ProcessHandle(pid_t child) : m_end(openProcess(child)) {
  if (!m_end.isOpen()) throw std::system_error(errno, std::generic_category(), "pidfd_open");
}

bool ProcessHandle::waitForEnd(const QDeadlineTimer& deadline) const {
  return waitUntilReadable(m_end.get(), deadline);
}

std::optional<int> ProcessHandle::reap() const {
  siginfo_t end{};
  const auto idOfEnd = static_cast<id_t>(m_end.get());
  while (::waitid(P_PIDFD, idOfEnd, &end, WEXITED | WNOHANG) != 0) {
    if (errno != EINTR) return -1;  // how it ended is not known
  }
  if (end.si_pid == 0) return std::nullopt;
  return end.si_status;
}

}  // namespace zarvy
