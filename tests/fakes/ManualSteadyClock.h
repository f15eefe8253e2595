#pragma once

#include <atomic>

#include "base/Clock.h"

namespace zarvy {

// A steady clock that the test moves, and that may go on by a step at each reading. Any thread.
class ManualSteadyClock final : public SteadyClock {
 public:
  [[nodiscard]] std::chrono::nanoseconds now() const override {
    return std::chrono::nanoseconds(m_now.fetch_add(m_step.load()));
  }

  void advance(std::chrono::nanoseconds duration) { m_now += duration.count(); }

  void setStep(std::chrono::nanoseconds step) { m_step = step.count(); }

 private:
  mutable std::atomic<std::chrono::nanoseconds::rep> m_now{0};
  std::atomic<std::chrono::nanoseconds::rep> m_step{0};
};

}  // namespace zarvy
