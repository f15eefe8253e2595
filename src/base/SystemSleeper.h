#pragma once

#include "base/Sleeper.h"
#include "base/posix/PreciseSleep.h"

namespace zarvy {

// Sleeps by the monotonic clock, to within some microseconds of what was asked, never less.
class SystemSleeper final : public Sleeper {
 public:
  void sleepFor(std::chrono::microseconds duration) override { sleepPrecisely(duration); }
};

}  // namespace zarvy
