#pragma once

#include <QString>

namespace zarvy {

// Named counters that survive restarts. Names count with their case. Any thread; never fails: a
// value that no longer fits into 64 bits ends the process with a line of output.
class Counters {
 public:
  virtual ~Counters() = default;

  // The value for this use: one more than the latest one, or `startValue` on the first use.
  [[nodiscard]] virtual qint64 nextValue(const QString& name, qint64 startValue) = 0;

  // Sets the counter to 0, so that its next value is 1.
  virtual void resetCounter(const QString& name) = 0;
};

}  // namespace zarvy
