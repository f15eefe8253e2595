#pragma once

#include <string>

#include "base/zone/LocalTime.h"

namespace zarvy {

// The clocks of this machine, as the C library has them: from the system's tz database, by TZ in
// any form that the library takes, by /etc/localtime without it. Everything in the program that
// tells the time of day asks here. The leap seconds of the zones under right/ do not count: the
// machine's clock has none. Any thread.
class SystemLocalTime final : public LocalTime {
 public:
  // Looks whether the machine has another time zone than before, which then holds for the whole
  // process. Microseconds.
  SystemLocalTime();

  // A fraction of a microsecond, and some of them far in the future. 0 where the year is beyond
  // the C library's.
  [[nodiscard]] std::int32_t offsetAt(std::int64_t instant) const override;

  [[nodiscard]] std::int32_t savingAt(std::int64_t instant) const override;

  // As the tz database names the zone, such as "Europe/Berlin". The name may be
  // unknown to others, for it is what TZ says; empty where the system has no name.
  [[nodiscard]] static std::string zoneName();
};

}  // namespace zarvy
