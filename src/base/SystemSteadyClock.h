#pragma once

#include "base/SteadyClock.h"

namespace zarvy {

// The machine's own.
class SystemSteadyClock final : public SteadyClock {
 public:
  [[nodiscard]] std::chrono::nanoseconds now() const override {
    return std::chrono::steady_clock::now().time_since_epoch();
  }
};

}  // namespace zarvy
