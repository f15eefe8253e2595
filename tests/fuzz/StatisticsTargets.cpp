#include "fuzz/StatisticsTargets.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/UtcZone.h"
#include "fuzz/ByteSource.h"
#include "stats/PeriodStatistics.h"
#include "support/EnvironmentVariable.h"

namespace zarvy::fuzz {
namespace {

// Places whose days are odd: that begin an hour late, are left out or come twice.
constexpr std::array zones{"UTC",          "Europe/Berlin",  "America/Havana",
                           "Pacific/Apia", "Asia/Kathmandu", "Africa/Casablanca",
                           "Asia/Manila",  "<+14>-14"};

constexpr qsizetype mostEvents = 100;
constexpr qint64 dayLength = 86'400'000;

QDateTime instant(qint64 milliseconds) {
  return QDateTime::fromMSecsSinceEpoch(milliseconds, utcZone);
}

// From year 1 to year 9999, as documents can hold them.
QDateTime anyTime(ByteSource& source) {
  constexpr qint64 first = -62'135'596'800;
  constexpr qint64 count = 315'537'897'600;
  const auto number = source.number<std::uint64_t>();
  return instant((first + static_cast<qint64>(number % count)) * 1000);
}

QDateTime timeNear(const QDateTime& now, ByteSource& source) {
  return instant(now.toMSecsSinceEpoch() + source.number<std::int32_t>() * qint64{1000});
}

ExpansionEvent eventFrom(ByteSource& source, const QDateTime& now) {
  ExpansionEvent event;
  const std::uint8_t kind = source.number();
  event.snippetID = QUuid(kind % 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  event.timestamp = kind < 0x80 ? timeNear(now, source) : anyTime(source);
  event.hourOfDay = kind % 16 == 7 ? source.number<qint64>() : source.number() % 24;
  event.triggerLength = source.number<std::int16_t>();
  event.expansionLength = source.number<std::int32_t>();
  return event;
}

void requireDays(const QList<DailyStats>& rows) {
  CalendarDays calendar;
  for (qsizetype place = 0; place < rows.size(); ++place) {
    const QDateTime& day = rows.at(place).date;
    require(calendar.startOfDay(day) == day, "a day begins later than it does");
    require(place == 0 || rows.at(place - 1).date < day, "days are out of order");
  }
}

// Each day up to today has a row, and each event from the first of them on counts.
void requirePeriod(const QList<DailyStats>& rows, const QList<ExpansionEvent>& events, int days,
                   const QDateTime& now) {
  const QDateTime today = CalendarDays().startOfDay(now);
  qsizetype daysUntilToday = 0;
  qint64 count = 0;
  for (const DailyStats& row : rows) {
    daysUntilToday += row.date <= today ? 1 : 0;
    count += row.expansionCount;
  }
  require(daysUntilToday == days, "the period has other days");
  require(rows.at(daysUntilToday - 1).date == today, "today is missing");
  const auto isInPeriod = [&rows](const ExpansionEvent& event) {
    return event.timestamp >= rows.front().date;
  };
  require(std::count_if(events.begin(), events.end(), isInPeriod) == count, "an event is left out");
}

void requireSums(PeriodStatistics& statistics, const QList<DailyStats>& rows) {
  const StatsMetrics metrics = statistics.metrics(0);
  qint64 byDay = 0;
  qint64 characters = 0;
  for (const DailyStats& row : rows) {
    byDay += row.expansionCount;
    characters += row.charactersSaved;
    require(row.charactersSaved >= 0, "characters are lost");
  }
  qint64 byHour = 0;
  for (const HourlyStats& row : statistics.hourlyStats()) byHour += row.expansionCount;
  qint64 bySnippet = 0;
  for (const SnippetUsage& usage : statistics.topSnippets(mostEvents)) bySnippet += usage.count;
  require(byDay == metrics.periodExpansions, "the days do not add up");
  require(byHour == metrics.periodExpansions, "the hours do not add up");
  require(bySnippet == metrics.periodExpansions, "the snippets do not add up");
  require(secondsSaved(characters) == metrics.periodTimeSaved, "the time does not add up");
}

void requireAverage(const StatsMetrics& metrics, const QList<ExpansionEvent>& events,
                    std::optional<int> days, const QDateTime& now) {
  double divisor = days.value_or(1);
  if (!days && !events.isEmpty()) {
    const qint64 span = events.front().timestamp.msecsTo(now);
    divisor =
        static_cast<double>(std::max<qint64>(1, span / dayLength + (span % dayLength > 0 ? 1 : 0)));
  }
  require(metrics.averagePerDay == static_cast<double>(metrics.periodExpansions) / divisor,
          "another average");
}

void requireOrder(const PeriodStatistics& statistics) {
  const QList<SnippetUsage> all = statistics.topSnippets(mostEvents);
  const auto isAhead = [](const SnippetUsage& a, const SnippetUsage& b) {
    return a.count > b.count;
  };
  require(std::is_sorted(all.begin(), all.end(), isAhead), "the most used do not come first");
  require(statistics.topSnippets(2) == all.first(std::min<qsizetype>(2, all.size())),
          "the top is another");
  const QList<HourlyStats> hours = statistics.hourlyStats();
  const auto isEarlier = [](const HourlyStats& a, const HourlyStats& b) { return a.hour < b.hour; };
  require(hours.size() >= 24, "hours are missing");
  require(std::is_sorted(hours.begin(), hours.end(), isEarlier), "hours are out of order");
}

}  // namespace

void periodStatistics(Bytes bytes) {
  ByteSource source(bytes);
  const EnvironmentVariable zone("TZ", zones.at(source.below(zones.size())));
  const QDateTime now = instant(source.number<std::uint32_t>() * qint64{1000});
  const auto length = static_cast<int>(source.below(100));
  const std::optional<int> days = length == 0 ? std::nullopt : std::optional(length);
  QList<ExpansionEvent> events;
  while (!source.isEmpty() && events.size() < mostEvents) events.append(eventFrom(source, now));

  PeriodStatistics statistics(events, days, now);
  const QList<DailyStats> rows = statistics.dailyStats();
  requireDays(rows);
  if (days) requirePeriod(rows, events, *days, now);
  requireSums(statistics, rows);
  requireAverage(statistics.metrics(0), events, days, now);
  requireOrder(statistics);
}

}  // namespace zarvy::fuzz
