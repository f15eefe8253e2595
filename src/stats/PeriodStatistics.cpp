#include "stats/PeriodStatistics.h"

#include <algorithm>
#include <chrono>

#include <QHash>
#include <QMap>

#include "base/CheckedArithmetic.h"
#include "base/EndProcess.h"

namespace zarvy {
namespace {

qint64 sum(qint64 total, qint64 characters) {
  return checkedSum(total, characters,
                    "The characters saved in a period are more than 64 bits can count.");
}

}  // namespace

qint64 charactersSaved(const ExpansionEvent& event) {
  if (event.expansionLength <= event.triggerLength) return 0;
  return checkedDifference(event.expansionLength, event.triggerLength,
                           "An expansion has saved more characters than 64 bits can count.");
}

double secondsSaved(qint64 characters) {
  constexpr double charactersPerSecond = 3.33;
  return static_cast<double>(characters) / charactersPerSecond;
}

PeriodStatistics::PeriodStatistics(const QList<ExpansionEvent>& events, std::optional<int> days,
                                   const QDateTime& now)
    : m_days(days), m_now(now) {
  if (!days) {
    m_events = events;
    return;
  }
  if (*days < 1) endProcess("A period of the statistics has at least one day.");
  const QDateTime start = m_calendar.startOfDay(now, 1 - *days);
  std::copy_if(events.begin(), events.end(), std::back_inserter(m_events),
               [&start](const ExpansionEvent& event) { return event.timestamp >= start; });
}

QList<DailyStats> PeriodStatistics::dailyStats() {
  QMap<QDateTime, DailyStats> rows;
  for (int day = 1 - m_days.value_or(0); m_days && day <= 0; ++day) {
    const QDateTime date = m_calendar.startOfDay(m_now, day);
    rows.insert(date, {.date = date});
  }
  for (const ExpansionEvent& event : m_events) {
    const QDateTime date = m_calendar.startOfDay(event.timestamp);
    DailyStats& row = rows[date];
    row.date = date;
    ++row.expansionCount;
    row.charactersSaved = sum(row.charactersSaved, charactersSaved(event));
  }
  return rows.values();
}

QList<HourlyStats> PeriodStatistics::hourlyStats() const {
  QMap<qint64, HourlyStats> rows;
  for (qint64 hour = 0; hour < 24; ++hour) rows.insert(hour, {.hour = hour});
  for (const ExpansionEvent& event : m_events) {
    HourlyStats& row = rows[event.hourOfDay];  // a file can hold other numbers too
    row.hour = event.hourOfDay;
    ++row.expansionCount;
  }
  return rows.values();
}

QList<SnippetUsage> PeriodStatistics::topSnippets(qsizetype limit) const {
  QList<SnippetUsage> usages;
  QHash<QUuid, qsizetype> places;  // in `usages`
  for (const ExpansionEvent& event : m_events) {
    const auto place = places.constFind(event.snippetID);
    if (place != places.cend()) {
      ++usages[*place].count;
      continue;
    }
    places.insert(event.snippetID, usages.size());
    usages.append({event.snippetID, event.snippetTitle, event.snippetTrigger, 1});
  }
  std::stable_sort(usages.begin(), usages.end(),
                   [](const SnippetUsage& a, const SnippetUsage& b) { return a.count > b.count; });
  return usages.first(std::clamp<qsizetype>(limit, 0, usages.size()));
}

StatsMetrics PeriodStatistics::metrics(double lifetimeTimeSaved) const {
  qint64 characters = 0;
  for (const ExpansionEvent& event : m_events) {
    characters = sum(characters, charactersSaved(event));
  }
  return {.lifetimeTimeSaved = lifetimeTimeSaved,
          .periodTimeSaved = secondsSaved(characters),
          .averagePerDay = static_cast<double>(m_events.size()) / static_cast<double>(dayCount()),
          .periodExpansions = m_events.size()};
}

// All time goes from the first event until now and counts days of 24 hours, begun ones whole.
qint64 PeriodStatistics::dayCount() const {
  if (m_days) return *m_days;
  if (m_events.isEmpty()) return 1;
  const std::chrono::milliseconds span(m_events.front().timestamp.msecsTo(m_now));
  return std::max<qint64>(1, std::chrono::ceil<std::chrono::days>(span).count());
}

}  // namespace zarvy
