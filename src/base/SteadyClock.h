#pragma once

#include <chrono>

namespace zarvy {

// Measures how long something takes: goes on evenly, whatever the machine's date is set to. Any
// thread.
class SteadyClock {
 public:
  virtual ~SteadyClock() = default;

  // The time since some fixed instant.
  [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
};

}  // namespace zarvy
