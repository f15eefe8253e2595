#include "base/posix/PreciseSleep.h"

#include <cerrno>
#include <ctime>
#include <sys/prctl.h>

namespace zarvy {

namespace {

constexpr long nanosecondsPerSecond = 1'000'000'000;

timespec deadlineAfter(std::chrono::microseconds duration) {
  timespec deadline{};
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
  deadline.tv_sec += seconds.count();
  deadline.tv_nsec += std::chrono::nanoseconds(duration - seconds).count();
  if (deadline.tv_nsec >= nanosecondsPerSecond) {
    deadline.tv_nsec -= nanosecondsPerSecond;
    ++deadline.tv_sec;
  }
  return deadline;
}

}  // namespace

void sleepPrecisely(std::chrono::microseconds duration) {
  if (duration <= std::chrono::microseconds::zero()) return;
  const timespec deadline = deadlineAfter(duration);
  // The kernel may round a wake-up late by the thread's slack, 50 microseconds unless told
  // otherwise, which is a twentieth of the shortest pause between two key presses.
  prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
  while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR) {
  }
}

}  // namespace zarvy
