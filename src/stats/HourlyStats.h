#pragma once

#include <QtGlobal>

namespace zarvy {

// The expansions of one hour of the day. Never stored.
struct HourlyStats {
  qint64 hour = 0;  // 0 to 23
  qint64 expansionCount = 0;

  [[nodiscard]] qint64 id() const { return hour; }

  bool operator==(const HourlyStats&) const = default;
};

}  // namespace zarvy
