#pragma once

#include <QtGlobal>

namespace zarvy {

// The figures of a period. Times are in seconds.
struct StatsMetrics {
  double lifetimeTimeSaved = 0;  // over every expansion ever recorded, whatever the period
  double periodTimeSaved = 0;
  double averagePerDay = 0;  // expansions
  qint64 periodExpansions = 0;

  bool operator==(const StatsMetrics&) const = default;
};

}  // namespace zarvy
