#pragma once

#include <cstdint>

namespace zarvy {

// How far the clocks of a place are ahead of UTC, all in seconds. Instants count from 1970 on, as
// time_t does.
class LocalTime {
 public:
  virtual ~LocalTime() = default;

  // Negative in the west.
  [[nodiscard]] virtual std::int32_t offsetAt(std::int64_t instant) const = 0;

  // How much of that offset is daylight saving time; 0 in winter. It decides by which name a time
  // zone goes, and nothing else.
  [[nodiscard]] virtual std::int32_t savingAt(std::int64_t instant) const = 0;
};

}  // namespace zarvy
