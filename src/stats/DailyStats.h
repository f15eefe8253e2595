#pragma once

#include <QDateTime>

namespace zarvy {

// The expansions of one day. Never stored.
struct DailyStats {
  QDateTime date;  // UTC; the first instant of the day
  qint64 expansionCount = 0;
  qint64 charactersSaved = 0;

  [[nodiscard]] const QDateTime& id() const { return date; }

  bool operator==(const DailyStats&) const = default;
};

}  // namespace zarvy
