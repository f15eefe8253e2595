#pragma once

#include <memory>
#include <string>

#include "base/zone/LocalTime.h"

namespace zarvy {

// Which time zone the engine, and all else that asks ICU's C interface in this process, takes for
// the machine's own: the clocks of `time`, under `name` where ICU knows it. The engine looks again
// at the beginning of each script. The thread of the scripts.
void setEngineZone(std::shared_ptr<const LocalTime> time, const std::string& name);

}  // namespace zarvy
