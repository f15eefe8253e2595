#pragma once

#include <chrono>

#include "base/posix/PreciseSleep.h"

namespace zarvy {

// Lets the calling thread rest. A pause of the program goes through here, so that tests read the
// pauses instead of waiting for them. Any thread but the main one.
class Sleeper {
 public:
  virtual ~Sleeper() = default;

  virtual void sleepFor(std::chrono::microseconds duration) = 0;
};

// Sleeps by the monotonic clock, to within some microseconds of what was asked, never less.
class SystemSleeper final : public Sleeper {
 public:
  void sleepFor(std::chrono::microseconds duration) override { sleepPrecisely(duration); }
};

}  // namespace zarvy
