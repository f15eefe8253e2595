#pragma once

namespace zarvy {

class Clock;
class Counters;
class DateFormatters;
class Evaluator;
class FieldDefaults;
class MainThread;
class Pasteboard;

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
