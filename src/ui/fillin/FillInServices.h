#pragma once

namespace zarvy {

class Clock;
class DateFormatters;
class FieldDefaultsStore;
class Scheduler;
class TextExpansionEngine;
class Workspace;

// What a form works with. All of it outlives the controller and its window.
struct FillInServices {
  const TextExpansionEngine& engine;
  FieldDefaultsStore& fieldDefaults;
  DateFormatters& dates;
  const Clock& clock;
  Scheduler& scheduler;
  Workspace& workspace;
};

}  // namespace zarvy
