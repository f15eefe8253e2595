#include "core/evaluation/Waiting.h"

#include <cerrno>
#include <chrono>
#include <poll.h>

namespace zarvy {

bool waitUntilReady(int descriptor, short events, const QDeadlineTimer& deadline) {
  using namespace std::chrono;
  pollfd watched{descriptor, events, 0};
  while (true) {
    const nanoseconds left = deadline.remainingTimeAsDuration();
    const auto wholeSeconds = duration_cast<seconds>(left);
    const timespec limit{wholeSeconds.count(), (left - wholeSeconds).count()};
    const int ready = ::ppoll(&watched, 1, deadline.isForever() ? nullptr : &limit, nullptr);
    if (ready >= 0) return ready > 0;
    if (errno != EINTR) return false;
  }
}

}  // namespace zarvy
