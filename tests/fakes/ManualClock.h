#pragma once

#include <chrono>
#include <mutex>

#include "base/Clock.h"
#include "base/UtcZone.h"

namespace zarvy {

// A clock that the test sets, and that may go on by a step at each reading so that two readings
// differ. Any thread.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(const QDateTime& now = QDateTime::fromSecsSinceEpoch(1768987800, utcZone),
                       std::chrono::milliseconds step = std::chrono::milliseconds{0})
      : m_now(now), m_step(step) {}

  [[nodiscard]] QDateTime now() const override {
    const std::scoped_lock guard(m_lock);
    const QDateTime reading = m_now;
    m_now = m_now.addMSecs(m_step.count());
    return reading;
  }

  void setNow(const QDateTime& now) {
    const std::scoped_lock guard(m_lock);
    m_now = now;
  }

  void advance(std::chrono::milliseconds duration) {
    const std::scoped_lock guard(m_lock);
    m_now = m_now.addMSecs(duration.count());
  }

 private:
  mutable std::mutex m_lock;
  mutable QDateTime m_now;
  std::chrono::milliseconds m_step;
};

}  // namespace zarvy
