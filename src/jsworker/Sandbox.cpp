#include "jsworker/Sandbox.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sched.h>
#include <seccomp.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <system_error>
#include <ucontext.h>
#include <unistd.h>

namespace zarvy {
namespace {

// Memory, threads, time, randomness, signals among its own threads, and the descriptors it has:
// what the engine's collector, the C library and the watch ask the kernel for.
constexpr int harmlessCalls[] = {
    SCMP_SYS(brk),
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(close),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(fstat),
    SCMP_SYS(futex),
    SCMP_SYS(get_mempolicy),
    SCMP_SYS(getcpu),
    SCMP_SYS(getegid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getpid),
    SCMP_SYS(getppid),
    SCMP_SYS(getrandom),
    SCMP_SYS(getrusage),
    SCMP_SYS(gettid),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(getuid),
    SCMP_SYS(lseek),
    SCMP_SYS(madvise),
    SCMP_SYS(membarrier),
    SCMP_SYS(mincore),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    SCMP_SYS(nanosleep),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pread64),
    SCMP_SYS(read),
    SCMP_SYS(recvfrom),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigpending),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(rt_sigsuspend),
    SCMP_SYS(rt_sigtimedwait),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_getparam),
    SCMP_SYS(sched_getscheduler),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sendto),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(set_tid_address),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(sysinfo),
    SCMP_SYS(time),
    SCMP_SYS(timerfd_settime),
    SCMP_SYS(uname),
    SCMP_SYS(write),
};

// What usual work asks for in vain: the engine wants another scheduling for its threads, and ICU
// looks for files of data beside what it has within itself.
constexpr int neededByNothing[] = {
    SCMP_SYS(newfstatat),
    SCMP_SYS(sched_setscheduler),
    SCMP_SYS(stat),
};

struct ReleaseFilter {
  void operator()(scmp_filter_ctx filter) const { seccomp_release(filter); }
};

void check(int result) {
  if (result < 0) throw std::system_error(-result, std::generic_category(), "seccomp");
}

// Threads yes, processes no.
constexpr scmp_datum_t threadFlags = CLONE_VM | CLONE_THREAD;

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

// This and refuse() run in the middle of the code that has made the call: no memory, no locks.
void tell(int call) {
  constexpr std::string_view text = "zarvy-js-worker: The sandbox refuses the system call ";
  constexpr std::size_t longestNumber = 11;
  std::array<char, text.size() + longestNumber + 1> line{};
  char* end = std::copy(text.begin(), text.end(), line.data());
  end = std::to_chars(end, end + longestNumber, call).ptr;
  *end++ = '\n';
  // A full pipe would hold up the script, and one without a reader would end the process.
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

// What the kernel is to do, as libseccomp has it, with a call that the sandbox refuses: such a call
// fails with EPERM. A library that was updated may ask for one that is not in the lists above, so
// the first one that is refused so is told on standard error, by its number, where that takes a
// line at once. On machines whose registers are not known here none is told.
//
// Takes SIGSYS for that: a call of a thread that blocks all signals, as the C library does for
// moments, ends the process. Once, ahead of the sandbox.
std::uint32_t actionForRefusedCalls() {
  if (!knowsRegisters) return SCMP_ACT_ERRNO(EPERM);
  struct sigaction action {};
  action.sa_sigaction = &refuse;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  sigaction(SIGSYS, &action, nullptr);
  return SCMP_ACT_TRAP;
}

}  // namespace

void enterSandbox() {
  constexpr std::uint32_t silently = SCMP_ACT_ERRNO(EPERM);
  const std::uint32_t refusal = actionForRefusedCalls();
  const std::unique_ptr<void, ReleaseFilter> owner(seccomp_init(refusal));
  scmp_filter_ctx filter = owner.get();
  if (!filter) throw std::system_error(ENOMEM, std::generic_category(), "seccomp");
  check(seccomp_attr_set(filter, SCMP_FLTATR_CTL_TSYNC, 1));
  for (const int call : harmlessCalls) check(seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0));
  if (refusal != silently) {
    for (const int call : neededByNothing) check(seccomp_rule_add(filter, silently, call, 0));
  }
  for (const int call : {SCMP_SYS(mmap), SCMP_SYS(mprotect)}) {
    // No page that can be executed: there is no compiler of machine code here.
    check(seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 1,
                           SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)));
  }
  check(seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1,
                         SCMP_A0(SCMP_CMP_MASKED_EQ, threadFlags, threadFlags)));
  // Its flags lie in memory, where a filter cannot see them; the C library then takes clone.
  check(seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0));
  check(seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(tgkill), 1,
                         SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(getpid()))));
  for (const scmp_datum_t option : {scmp_datum_t{PR_SET_NAME}, scmp_datum_t{PR_SET_VMA}}) {
    check(
        seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(prctl), 1, SCMP_A0(SCMP_CMP_EQ, option)));
  }
  check(seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(prlimit64), 1,
                         SCMP_A2(SCMP_CMP_EQ, 0)));  // reads a limit, sets none
  check(seccomp_load(filter));
}

void giveUpPrivileges() {
  constexpr rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  const int descriptor = open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
  if (descriptor >= 0) {
    // Where it cannot be set the kernel chooses by size alone.
    [[maybe_unused]] const ssize_t written = write(descriptor, "1000", 4);
    close(descriptor);
  }
  prctl(PR_SET_DUMPABLE, 0);
}

}  // namespace zarvy
