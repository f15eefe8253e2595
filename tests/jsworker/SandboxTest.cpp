// The sandbox of the script worker, in processes of the test's own.

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/posix/FileDescriptor.h"
#include "base/posix/TimedTransfers.h"
#include "base/posix/WholeTransfers.h"
#include "jsworker/Sandbox.h"

namespace zarvy {
namespace {

constexpr std::chrono::seconds patience{60};

#if defined(__x86_64__) || defined(__aarch64__)
constexpr bool isTold = true;
#else
constexpr bool isTold = false;
#endif

bool isRefused(long call) {
  errno = 0;
  return ::syscall(call, 0, nullptr, 0) == -1 && errno == EPERM;
}

// What the process prints when the sandbox refuses that call.
std::string lineOn(long call) {
  return isTold
             ? "zarvy-js-worker: The sandbox refuses the system call " + std::to_string(call) + "\n"
             : "";
}

class Sandbox : public testing::Test {
 protected:
  Sandbox() : m_errors(*makePipe()) {}

  // Starts a process that does as told in the sandbox and exits with 0 where that was true.
  void start(const std::function<bool()>& inSandbox) {
    m_process = ::fork();
    ASSERT_GE(m_process, 0);
    if (m_process == 0) {
      ::dup2(m_errors.writing.get(), STDERR_FILENO);
      enterSandbox();
      ::_exit(inSandbox() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    m_errors.writing.reset();
  }

  [[nodiscard]] int statusAtTheEnd() const {
    int status = -1;
    EXPECT_EQ(::waitpid(m_process, &status, 0), m_process);
    return status;
  }

  [[nodiscard]] std::string printed() const {
    const auto text = readToEnd(m_errors.reading.get(), 10'000, patience);
    return text ? text->toStdString() : "no end";
  }

  Pipe m_errors;
  pid_t m_process = -1;
};

TEST_F(Sandbox, TellsOfTheFirstCallThatItRefuses) {
  start([] { return isRefused(SYS_getpgid) && isRefused(SYS_openat) && isRefused(SYS_getpgid); });
  EXPECT_EQ(printed(), lineOn(SYS_getpgid));
  EXPECT_EQ(statusAtTheEnd(), 0);
}

TEST_F(Sandbox, SaysNothingOfWhatUsualWorkAsksForInVain) {
  start([] { return isRefused(SYS_sched_setscheduler) && isRefused(SYS_newfstatat); });
  EXPECT_EQ(printed(), "");
  EXPECT_EQ(statusAtTheEnd(), 0);
}

TEST_F(Sandbox, RefusesWhatOtherThreadsAskFor) {
  start([] {
    bool isRefusedThere = false;
    std::thread([&] { isRefusedThere = isRefused(SYS_openat); }).join();
    return isRefusedThere;
  });
  EXPECT_EQ(printed(), lineOn(SYS_openat));
  EXPECT_EQ(statusAtTheEnd(), 0);
}

TEST_F(Sandbox, DoesNotWaitForTheReaderOfTheErrors) {
  const int writing = m_errors.writing.get();
  ASSERT_EQ(::fcntl(writing, F_SETFL, O_NONBLOCK), 0);
  const std::string much(1 << 20, ' ');
  EXPECT_FALSE(writeAll(writing, much.data(), much.size()));
  ASSERT_EQ(::fcntl(writing, F_SETFL, 0), 0);
  start([] { return isRefused(SYS_openat); });
  EXPECT_EQ(statusAtTheEnd(), 0);
}

TEST_F(Sandbox, GoesOnWithoutAReaderOfTheErrors) {
  m_errors.reading.reset();
  start([] { return isRefused(SYS_openat); });
  EXPECT_EQ(statusAtTheEnd(), 0);
}

TEST_F(Sandbox, EndsTheProcessAtItsSignalFromOutside) {
  auto line = makeSocketPair();
  ASSERT_TRUE(line);
  start([&] {
    const int own = line->own.get();
    char never = 0;
    return sendAll(own, "r", 1) && receiveAll(own, &never, 1);
  });
  char ready = 0;
  ASSERT_TRUE(receiveAll(line->other.get(), &ready, 1));
  ASSERT_EQ(::kill(m_process, SIGSYS), 0);
  EXPECT_NE(statusAtTheEnd(), 0);
}

}  // namespace
}  // namespace zarvy
