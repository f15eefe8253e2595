#include "base/posix/Waiting.h"

#include <cerrno>
#include <chrono>
#include <poll.h>

namespace zarvy {

namespace {

bool waitUntilReady(int descriptor, short event, const QDeadlineTimer& deadline) {
  using namespace std::chrono;
  pollfd watched{descriptor, event, 0};
  while (true) {
    const nanoseconds left = deadline.remainingTimeAsDuration();
    const auto wholeSeconds = duration_cast<seconds>(left);
    const timespec limit{wholeSeconds.count(), (left - wholeSeconds).count()};
    const int ready = ::ppoll(&watched, 1, deadline.isForever() ? nullptr : &limit, nullptr);
    if (ready >= 0) return ready > 0;
    if (errno != EINTR) return false;
  }
}

}  // namespace

bool waitUntilReadable(int descriptor, const QDeadlineTimer& deadline) {
  return waitUntilReady(descriptor, POLLIN, deadline);
}

bool waitUntilWritable(int descriptor, const QDeadlineTimer& deadline) {
  return waitUntilReady(descriptor, POLLOUT, deadline);
}

}  // namespace zarvy
