#pragma once

#include <QString>

namespace zarvy {

// Named counters that survive restarts. Names count with their case. Any thread; never fails. A
// counter stops at the greatest number of 64 bits: both the document that it is read from and the
// placeholder that gives its start may hold that, and neither is to end the program.
class Counters {
 public:
  virtual ~Counters() = default;

  // The value for this use: one more than the latest one, or `startValue` on the first use.
  [[nodiscard]] virtual qint64 nextValue(const QString& name, qint64 startValue) = 0;

  // Sets the counter to 0, so that its next value is 1.
  virtual void resetCounter(const QString& name) = 0;
};

}  // namespace zarvy
