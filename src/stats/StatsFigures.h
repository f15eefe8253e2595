#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace zarvy {

// The figures of a period. Times are in seconds.
struct StatsMetrics {
  double lifetimeTimeSaved = 0;  // over every expansion ever recorded, whatever the period
  double periodTimeSaved = 0;
  double averagePerDay = 0;  // expansions
  qint64 periodExpansions = 0;

  bool operator==(const StatsMetrics&) const = default;
};

// How often a snippet was used in a period, under the name that it had at the first use. Never
// stored.
struct SnippetUsage {
  QUuid snippetID;
  QString title;
  QString trigger;
  qint64 count = 0;

  [[nodiscard]] QUuid id() const { return snippetID; }

  bool operator==(const SnippetUsage&) const = default;
};

// The expansions of one hour of the day. Never stored.
struct HourlyStats {
  qint64 hour = 0;  // 0 to 23
  qint64 expansionCount = 0;

  [[nodiscard]] qint64 id() const { return hour; }

  bool operator==(const HourlyStats&) const = default;
};

// The expansions of one day. Never stored.
struct DailyStats {
  QDateTime date;  // UTC; the first instant of the day
  qint64 expansionCount = 0;
  qint64 charactersSaved = 0;

  [[nodiscard]] const QDateTime& id() const { return date; }

  bool operator==(const DailyStats&) const = default;
};

}  // namespace zarvy
