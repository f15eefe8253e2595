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

}  // namespace zarvy
