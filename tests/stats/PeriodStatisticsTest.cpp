#include <limits>
#include <optional>
#include <random>

#include <QMap>

#include <gtest/gtest.h>

#include "stats/Events.h"
#include "stats/PeriodStatistics.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const EnvironmentVariable machinesZone("TZ", "UTC");

const QString now = u"2026-01-21T09:30:00Z"_s;  // a Wednesday

PeriodStatistics statistics(const QList<ExpansionEvent>& events, std::optional<int> days,
                            const QString& instant = now) {
  return {events, days, utc(instant)};
}

// One row as "2026-01-21T00:00:00Z 2 192".
QStringList shown(const QList<DailyStats>& rows) {
  QStringList texts;
  for (const DailyStats& row : rows) {
    EXPECT_EQ(row.id(), row.date);
    texts.append(u"%1 %2 %3"_s.arg(row.date.toString(Qt::ISODate))
                     .arg(row.expansionCount)
                     .arg(row.charactersSaved));
  }
  return texts;
}

// The hours that have events, as "9: 2".
QStringList shown(const QList<HourlyStats>& rows) {
  QStringList texts;
  for (const HourlyStats& row : rows) {
    EXPECT_EQ(row.id(), row.hour);
    if (row.expansionCount > 0) texts.append(u"%1: %2"_s.arg(row.hour).arg(row.expansionCount));
  }
  return texts;
}

// One row as "Title ;trigger 2".
QStringList shown(const QList<SnippetUsage>& rows) {
  QStringList texts;
  for (const SnippetUsage& row : rows) {
    EXPECT_EQ(row.id(), row.snippetID);
    texts.append(u"%1 %2 %3"_s.arg(row.title, row.trigger).arg(row.count));
  }
  return texts;
}

TEST(SavedTyping, IsWhatTheTextIsLongerThanTheTrigger) {
  struct Row {
    qint64 trigger;
    qint64 expansion;
    qint64 characters;
    double seconds;
  };
  constexpr qint64 most = std::numeric_limits<qint64>::max();
  constexpr qint64 least = std::numeric_limits<qint64>::min();
  const Row table[] = {
      {4, 100, 96, 28.8288}, {12, 1, 0, 0},       {3, 3, 0, 0},
      {0, 333, 333, 100},    {most, least, 0, 0}, {0, most, most, 2.76978e18},
  };
  for (const Row& row : table) {
    ExpansionEvent event;
    event.triggerLength = row.trigger;
    event.expansionLength = row.expansion;
    EXPECT_EQ(charactersSaved(event), row.characters);
    EXPECT_NEAR(secondsSaved(charactersSaved(event)), row.seconds, 1e-5 * row.seconds);
  }
}

TEST(SavedTypingDeathTest, EndsTheProcessWhereItCannotBeCounted) {
  ExpansionEvent event;
  event.triggerLength = -1;
  event.expansionLength = std::numeric_limits<qint64>::max();
  EXPECT_EXIT((void)charactersSaved(event), testing::KilledBySignal(SIGABRT),
              "^An expansion has saved more characters than 64 bits can count\\.\n$");
}

TEST(PeriodStatistics, HasARowForEachDayOfAPeriod) {
  struct Row {
    const char* what;
    QString zone;
    QString now;
    int days;
    QStringList events;
    QStringList rows;
  };
  const Row table[] = {
      {"today, nothing", u"UTC"_s, now, 1, {}, {u"2026-01-21T00:00:00Z 0 0"_s}},
      {"today and two days before, with what lies on their edges",
       u"UTC"_s,
       now,
       3,
       {u"2026-01-18T23:59:59.999Z"_s, u"2026-01-19T00:00:00Z"_s, u"2026-01-19T23:59:59.999Z"_s,
        u"2026-01-21T09:30:00Z"_s},
       {u"2026-01-19T00:00:00Z 2 192"_s, u"2026-01-20T00:00:00Z 0 0"_s,
        u"2026-01-21T00:00:00Z 1 96"_s}},
      {"what lies ahead, when a clock was wrong",
       u"UTC"_s,
       now,
       1,
       {u"2026-01-21T23:00:00Z"_s, u"2026-03-01T12:00:00Z"_s},
       {u"2026-01-21T00:00:00Z 1 96"_s, u"2026-03-01T00:00:00Z 1 96"_s}},
      {"in no order of time",
       u"UTC"_s,
       now,
       2,
       {u"2026-01-21T01:00:00Z"_s, u"2026-01-20T01:00:00Z"_s, u"2026-01-19T01:00:00Z"_s,
        u"2026-01-21T02:00:00Z"_s},
       {u"2026-01-20T00:00:00Z 1 96"_s, u"2026-01-21T00:00:00Z 2 192"_s}},
      {"around the day of 23 hours",
       u"Europe/Berlin"_s,
       u"2026-03-30T08:00:00Z"_s,
       3,
       {u"2026-03-28T22:59:59Z"_s, u"2026-03-28T23:00:00Z"_s, u"2026-03-29T21:59:59Z"_s,
        u"2026-03-29T22:00:00Z"_s},
       {u"2026-03-27T23:00:00Z 1 96"_s, u"2026-03-28T23:00:00Z 2 192"_s,
        u"2026-03-29T22:00:00Z 1 96"_s}},
      {"around the day of 25 hours",
       u"Europe/Berlin"_s,
       u"2026-10-26T08:00:00Z"_s,
       3,
       {u"2026-10-24T21:59:59Z"_s, u"2026-10-24T22:00:00Z"_s, u"2026-10-25T22:59:59Z"_s,
        u"2026-10-25T23:00:00Z"_s},
       {u"2026-10-23T22:00:00Z 1 96"_s, u"2026-10-24T22:00:00Z 2 192"_s,
        u"2026-10-25T23:00:00Z 1 96"_s}},
      {"from a day that begins at one",
       u"America/Sao_Paulo"_s,
       u"2018-11-05T12:00:00Z"_s,
       2,
       {u"2018-11-04T02:59:59Z"_s, u"2018-11-04T03:00:00Z"_s, u"2018-11-05T01:59:59Z"_s},
       {u"2018-11-04T03:00:00Z 2 192"_s, u"2018-11-05T02:00:00Z 0 0"_s}},
      {"over a day that the zone left out and that is none",
       u"Pacific/Apia"_s,
       u"2011-12-31T20:00:00Z"_s,  // in the morning of January 1
       4,
       {u"2011-12-30T09:59:59Z"_s, u"2011-12-30T10:00:00Z"_s},
       {u"2011-12-28T10:00:00Z 0 0"_s, u"2011-12-29T10:00:00Z 1 96"_s,
        u"2011-12-30T10:00:00Z 1 96"_s, u"2011-12-31T10:00:00Z 0 0"_s}},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.what);
    const EnvironmentVariable zone("TZ", row.zone.toLatin1());
    EXPECT_EQ(shown(statistics(eventsAt(row.events), row.days, row.now).dailyStats()), row.rows);
  }
}

TEST(PeriodStatistics, HasRowsForDaysWithEventsAloneOverAllTime) {
  EXPECT_EQ(shown(statistics({}, {}).dailyStats()), QStringList());
  const QList<ExpansionEvent> events =
      eventsAt({u"2024-02-29T22:59:59Z"_s, u"2025-10-25T22:00:00Z"_s, u"2025-10-26T22:59:59Z"_s});
  const EnvironmentVariable zone("TZ", "Europe/Berlin");
  EXPECT_EQ(shown(statistics(events, {}, now).dailyStats()),
            (QStringList{u"2024-02-28T23:00:00Z 1 96"_s, u"2025-10-25T22:00:00Z 2 192"_s}));
}

TEST(PeriodStatistics, CountsDaysWithADaylightSavingChangeAsOneInAnyNumberOfDays) {
  const EnvironmentVariable zone("TZ", "Europe/Berlin");
  const auto rows = statistics({}, 400, u"2026-11-15T08:00:00Z"_s).dailyStats();
  ASSERT_EQ(rows.size(), 400);
  EXPECT_EQ(rows.front().date, utc(u"2025-10-11T22:00:00Z"_s));
  QMap<qint64, int> hours;
  for (qsizetype day = 1; day < rows.size(); ++day) {
    ++hours[rows[day - 1].date.secsTo(rows[day].date) / 3600];
  }
  EXPECT_EQ(hours, (QMap<qint64, int>{{23, 1}, {24, 396}, {25, 2}}));
}

TEST(PeriodStatistics, HasARowForEachHour) {
  const auto rows = statistics({}, 1).hourlyStats();
  ASSERT_EQ(rows.size(), 24);
  for (qsizetype hour = 0; hour < 24; ++hour) {
    EXPECT_EQ(rows[hour], (HourlyStats{.hour = hour, .expansionCount = 0}));
  }
  EXPECT_EQ(statistics({}, {}).hourlyStats(), rows);
}

TEST(PeriodStatistics, CountsEachEventForTheHourThatWasStored) {
  QList<ExpansionEvent> events = eventsAt({u"2026-01-20T23:59:59Z"_s, u"2026-01-21T01:00:00Z"_s,
                                           u"2026-01-21T01:30:00Z"_s, u"2026-01-21T09:00:00Z"_s});
  events[0].hourOfDay = 5;
  events[1].hourOfDay = 10;  // recorded in another time zone
  events[2].hourOfDay = 10;
  events[3].hourOfDay = 0;
  EXPECT_EQ(shown(statistics(events, 1).hourlyStats()), (QStringList{u"0: 1"_s, u"10: 2"_s}));
  EXPECT_EQ(shown(statistics(events, {}).hourlyStats()),
            (QStringList{u"0: 1"_s, u"5: 1"_s, u"10: 2"_s}));
}

TEST(PeriodStatistics, KeepsAnHourOutsideTheDay) {
  QList<ExpansionEvent> events = eventsAt({now, now});
  events[0].hourOfDay = 24;
  events[1].hourOfDay = -1;
  const auto rows = statistics(events, 1).hourlyStats();
  EXPECT_EQ(rows.size(), 26);
  EXPECT_EQ(shown(rows), (QStringList{u"-1: 1"_s, u"24: 1"_s}));
}

// Snippets by number; `titles` are those of the events, in order.
QList<ExpansionEvent> uses(const QList<int>& snippets, const QStringList& titles = {}) {
  QList<ExpansionEvent> events;
  for (const int snippet : snippets) {
    ExpansionEvent event = eventAt(now);
    event.snippetID = QUuid(static_cast<uint>(snippet), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    event.snippetTitle = titles.value(events.size(), QString::number(snippet));
    event.snippetTrigger = u";t"_s;
    events.append(event);
  }
  return events;
}

TEST(PeriodStatistics, ListsTheSnippetsUsedMost) {
  const auto events = uses({1, 2, 2, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 5, 6, 6, 6, 6, 6, 6});
  EXPECT_EQ(shown(statistics(events, 1).topSnippets(5)),
            (QStringList{u"6 ;t 6"_s, u"5 ;t 5"_s, u"4 ;t 4"_s, u"3 ;t 3"_s, u"2 ;t 2"_s}));
  EXPECT_EQ(statistics(events, {}).topSnippets(100).size(), 6);
  EXPECT_EQ(shown(statistics(events, {}).topSnippets(1)), QStringList{u"6 ;t 6"_s});
  EXPECT_TRUE(statistics(events, {}).topSnippets(0).isEmpty());
  EXPECT_TRUE(statistics(events, {}).topSnippets(-1).isEmpty());
  EXPECT_TRUE(statistics({}, 1).topSnippets(5).isEmpty());
}

TEST(PeriodStatistics, ListsSnippetsUsedEquallyOftenInTheOrderOfTheirFirstUse) {
  EXPECT_EQ(shown(statistics(uses({3, 1, 2, 1, 2, 3}), 1).topSnippets(5)),
            (QStringList{u"3 ;t 2"_s, u"1 ;t 2"_s, u"2 ;t 2"_s}));
}

TEST(PeriodStatistics, ShowsASnippetUnderTheNameOfItsFirstUseInThePeriod) {
  QList<ExpansionEvent> events = uses({1, 1, 1}, {u"first"_s, u"second"_s, u"third"_s});
  events[0].timestamp = utc(u"2026-01-20T12:00:00Z"_s);
  EXPECT_EQ(shown(statistics(events, 2).topSnippets(5)), QStringList{u"first ;t 3"_s});
  EXPECT_EQ(shown(statistics(events, 1).topSnippets(5)), QStringList{u"second ;t 2"_s});
}

TEST(PeriodStatistics, GivesTheFiguresOfAPeriod) {
  struct Row {
    const char* what;
    std::optional<int> days;
    QStringList events;
    double timeSaved;
    double averagePerDay;
    qint64 expansions;
  };
  const Row table[] = {
      {"a day without", 1, {}, 0, 0, 0},
      {"a week without", 7, {u"2026-01-14T23:59:59Z"_s}, 0, 0, 0},
      {"all time without", {}, {}, 0, 0, 0},
      {"a day", 1, {now}, 96 / 3.33, 1, 1},
      {"a week", 7, {u"2026-01-15T00:00:00Z"_s, now, now}, 288 / 3.33, 3.0 / 7, 3},
      {"a moment ago", {}, {u"2026-01-21T09:29:59.999Z"_s}, 96 / 3.33, 1, 1},
      {"this very moment", {}, {now}, 96 / 3.33, 1, 1},
      {"a day ago", {}, {u"2026-01-20T09:30:00Z"_s}, 96 / 3.33, 1, 1},
      {"48 hours ago", {}, {u"2026-01-19T09:30:00Z"_s}, 96 / 3.33, 0.5, 1},
      {"a second more", {}, {u"2026-01-19T09:29:59Z"_s}, 96 / 3.33, 1.0 / 3, 1},
      {"a millisecond more", {}, {u"2026-01-19T09:29:59.999Z"_s}, 96 / 3.33, 1.0 / 3, 1},
      {"the first in the list",
       {},
       {u"2026-01-20T09:30:00Z"_s, u"2020-01-01T00:00:00Z"_s},
       192 / 3.33,
       2,
       2},
      {"ahead, when a clock was wrong", {}, {u"2027-01-21T09:30:00Z"_s}, 96 / 3.33, 1, 1},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.what);
    const StatsMetrics metrics = statistics(eventsAt(row.events), row.days).metrics(12.5);
    EXPECT_EQ(metrics.lifetimeTimeSaved, 12.5);
    EXPECT_EQ(metrics.periodTimeSaved, row.timeSaved);
    EXPECT_EQ(metrics.averagePerDay, row.averagePerDay);
    EXPECT_EQ(metrics.periodExpansions, row.expansions);
  }
}

TEST(PeriodStatistics, AgreesWithItselfOverRandomEvents) {
  std::mt19937_64 random(20260121);
  const QDateTime last = utc(now);
  QList<ExpansionEvent> events;
  for (int index = 0; index < 3000; ++index) {
    ExpansionEvent event = eventAt(now);
    event.timestamp = last.addSecs(-static_cast<qint64>(random() % (120 * 86'400)));
    event.hourOfDay = static_cast<qint64>(random() % 24);
    event.expansionLength = static_cast<qint64>(random() % 200);
    event.snippetID = QUuid(static_cast<uint>(random() % 40), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    events.append(event);
  }
  for (const std::optional<int> days : {std::optional<int>(), {1}, {7}, {30}, {90}, {200}}) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    PeriodStatistics period = statistics(events, days, now);
    const StatsMetrics metrics = period.metrics(0);
    qint64 expected = 0;
    qint64 perDay = 0;
    qint64 characters = 0;
    qint64 perHour = 0;
    qint64 perSnippet = 0;
    const QDateTime start = CalendarDays().startOfDay(last, 1 - days.value_or(100'000));
    for (const ExpansionEvent& event : events) expected += event.timestamp >= start ? 1 : 0;
    for (const DailyStats& row : period.dailyStats()) perDay += row.expansionCount;
    for (const DailyStats& row : period.dailyStats()) characters += row.charactersSaved;
    for (const HourlyStats& row : period.hourlyStats()) perHour += row.expansionCount;
    for (const SnippetUsage& row : period.topSnippets(40)) perSnippet += row.count;
    EXPECT_EQ(metrics.periodExpansions, expected);
    EXPECT_EQ(perDay, expected);
    EXPECT_EQ(perHour, expected);
    EXPECT_EQ(perSnippet, expected);
    EXPECT_EQ(secondsSaved(characters), metrics.periodTimeSaved);
    if (days) {
      EXPECT_EQ(period.dailyStats().size(), *days);
    }
  }
}

TEST(PeriodStatisticsDeathTest, EndsTheProcessForAPeriodWithoutADay) {
  for (const int days : {0, -1, std::numeric_limits<int>::min()}) {
    EXPECT_EXIT((void)statistics({}, days), testing::KilledBySignal(SIGABRT),
                "^A period of the statistics has at least one day\\.\n$");
  }
}

TEST(PeriodStatisticsDeathTest, EndsTheProcessWhereASumDoesNotFit) {
  QList<ExpansionEvent> events = eventsAt({now, now});
  for (ExpansionEvent& event : events) {
    event.expansionLength = std::numeric_limits<qint64>::max();
  }
  const char* const line =
      "^The characters saved in a period are more than 64 bits can count\\.\n$";
  EXPECT_EXIT((void)statistics(events, 1).dailyStats(), testing::KilledBySignal(SIGABRT), line);
  EXPECT_EXIT((void)statistics(events, 1).metrics(0), testing::KilledBySignal(SIGABRT), line);
}

}  // namespace
}  // namespace zarvy
