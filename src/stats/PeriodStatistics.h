#pragma once

#include <optional>

#include <QDateTime>
#include <QList>

#include "base/text/CalendarDays.h"
#include "core/model/ExpansionEvent.h"
#include "stats/StatsFigures.h"

namespace zarvy {

// What an expansion spared its user: the characters that did not have to be typed; 0 where the
// trigger is longer than the text. Ends the process where that does not fit into 64 bits.
[[nodiscard]] qint64 charactersSaved(const ExpansionEvent& event);

// The time for so many characters, at an assumed typing speed of 3.33 a second.
[[nodiscard]] double secondsSaved(qint64 characters);

// What the events of one period amount to. One thread; StatsStore tells what the results are.
class PeriodStatistics {
 public:
  // `events` are oldest first. Of them count those of the last `days` days by the machine's clocks,
  // today included, or all; `days` below 1 ends the process.
  PeriodStatistics(const QList<ExpansionEvent>& events, std::optional<int> days,
                   const QDateTime& now);

  [[nodiscard]] QList<DailyStats> dailyStats();
  [[nodiscard]] QList<HourlyStats> hourlyStats() const;
  [[nodiscard]] QList<SnippetUsage> topSnippets(qsizetype limit) const;
  [[nodiscard]] StatsMetrics metrics(double lifetimeTimeSaved) const;

 private:
  [[nodiscard]] qint64 dayCount() const;

  const std::optional<int> m_days;
  const QDateTime m_now;
  CalendarDays m_calendar;
  QList<ExpansionEvent> m_events;  // of the period
};

}  // namespace zarvy
