#pragma once

#include "base/zone/LocalTime.h"
#include "jsworker/wire/ScriptWire.h"

namespace zarvy {

// What `time` says of the instant, for as long around it as is easily found out: mostly a month, so
// that a script which counts days does not ask for each. `question` is within the agreed range.
[[nodiscard]] scriptwire::ClockAnswer answerTo(const scriptwire::ClockQuestion& question,
                                               const LocalTime& time);

}  // namespace zarvy
