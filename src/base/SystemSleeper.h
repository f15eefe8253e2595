#pragma once

#include "base/Sleeper.h"

namespace zarvy {

// Sleeps by the monotonic clock, to within some microseconds of what was asked, never less.
class SystemSleeper final : public Sleeper {
 public:
  void sleepFor(std::chrono::microseconds duration) override;
};

}  // namespace zarvy
