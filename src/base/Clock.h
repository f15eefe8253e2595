#pragma once

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

}  // namespace zarvy
