#pragma once

#include <chrono>
#include <ctime>

#include <QDateTime>

namespace zarvy {

// What time it is. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;

  // The present instant, in UTC.
  [[nodiscard]] virtual QDateTime now() const = 0;
};

// The machine's own clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};

// Measures how long something takes: goes on evenly, whatever the machine's date is set to. Any
// thread.
class SteadyClock {
 public:
  virtual ~SteadyClock() = default;

  // The time since some fixed instant.
  [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
};

// The processor time that the calling thread has had: goes on only while the thread runs, so that a
// busy machine makes nothing seem slow. Some 0.2 us a reading. Readings of different threads have
// nothing to do with each other.
class ThreadTimeClock final : public SteadyClock {
 public:
  [[nodiscard]] std::chrono::nanoseconds now() const override {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
  }
};

}  // namespace zarvy
