#include "jsworker/RefusedCalls.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <seccomp.h>
#include <string_view>
#include <ucontext.h>
#include <unistd.h>

namespace zarvy {
namespace {

#if defined(__x86_64__)
constexpr bool knowsRegisters = true;
void setResult(ucontext_t& caller, int result) {
  caller.uc_mcontext.gregs[REG_RAX] = result;
}
#elif defined(__aarch64__)
constexpr bool knowsRegisters = true;
void setResult(ucontext_t& caller, int result) {
  caller.uc_mcontext.regs[0] = static_cast<unsigned long long>(result);
}
#else
constexpr bool knowsRegisters = false;
void setResult(ucontext_t& /*caller*/, int /*result*/) {}
#endif

// What follows runs in the middle of whatever has made the call: no memory, no locks.

void tell(int call) {
  constexpr std::string_view text = "zarvy-js-worker: The sandbox refuses the system call ";
  constexpr std::size_t longestNumber = 11;
  std::array<char, text.size() + longestNumber + 1> line{};
  char* end = std::copy(text.begin(), text.end(), line.data());
  end = std::to_chars(end, end + longestNumber, call).ptr;
  *end++ = '\n';
  // A pipe that nobody reads would hold up the script, or end the process.
  pollfd room{STDERR_FILENO, POLLOUT, 0};
  if (poll(&room, 1, 0) != 1 || room.revents != POLLOUT) return;
  [[maybe_unused]] const ssize_t written =
      write(STDERR_FILENO, line.data(), static_cast<std::size_t>(end - line.data()));
}

void refuse(int, siginfo_t* information, void* caller) {
  constexpr int bySandbox = 1;  // SYS_SECCOMP, which the C library's headers do not have
  if (information->si_code != bySandbox) _exit(EXIT_FAILURE);  // from outside, as if unhandled
  static std::atomic_flag hasTold = ATOMIC_FLAG_INIT;
  const int before = errno;
  if (!hasTold.test_and_set()) tell(information->si_syscall);
  errno = before;
  setResult(*static_cast<ucontext_t*>(caller), -EPERM);
}

}  // namespace

std::uint32_t actionForRefusedCalls() {
  if (!knowsRegisters) return SCMP_ACT_ERRNO(EPERM);
  struct sigaction action {};
  action.sa_sigaction = &refuse;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  sigaction(SIGSYS, &action, nullptr);
  return SCMP_ACT_TRAP;
}

}  // namespace zarvy
