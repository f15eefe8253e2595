#pragma once

#include <optional>

#include <QString>

namespace zarvy {

class Clock;
class DateFormatters;
class Evaluator;
class MainThread;
class Pasteboard;

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

// The texts that the user asked to have remembered for the fields of forms, by the field's name
// alone, with its case: one text serves the fields of that name in all snippets. Any thread.
class FieldDefaults {
 public:
  virtual ~FieldDefaults() = default;

  // Absent where nothing is remembered; an empty text can be.
  [[nodiscard]] virtual std::optional<QString> value(const QString& name) const = 0;
};

// What the placeholders of a text are made from. All of it outlives the holder of this.
struct PlaceholderServices {
  const Clock& clock;
  DateFormatters& dates;
  const Pasteboard& pasteboard;  // asked on `mainThread`
  MainThread& mainThread;
  Counters& counters;
  const FieldDefaults& fieldDefaults;
  Evaluator& shell;
  Evaluator& javaScript;
};

}  // namespace zarvy
