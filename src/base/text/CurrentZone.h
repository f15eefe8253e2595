#pragma once

#include <memory>

#include <unicode/timezone.h>

namespace zarvy {

// The time zone that the machine has now, for ICU: the clocks are those of the C library. Cheap
// enough to be asked for at each use, as it has to be: the machine may travel. Any thread.
[[nodiscard]] std::unique_ptr<icu::TimeZone> currentZone();

}  // namespace zarvy
