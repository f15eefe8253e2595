#include <ostream>

#include <QTimeZone>

#include <gtest/gtest.h>

#include "base/text/CalendarDays.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QDateTime utc(const QString& text) {
  const QDateTime instant = QDateTime::fromString(text, Qt::ISODateWithMs);
  EXPECT_TRUE(instant.isValid()) << text.toStdString();
  return instant;
}

QString shown(const QDateTime& instant) {
  return instant.toUTC().toString(Qt::ISODate);
}

TEST(CalendarDays, BeginWhereTheClocksOfTheZoneSaySo) {
  struct Row {
    const char* what;
    QString zone;
    QString instant;
    QString start;
  };
  const Row table[] = {
      {"plain", u"UTC"_s, u"2026-01-21T09:30:00Z"_s, u"2026-01-21T00:00:00Z"_s},
      {"the first instant", u"UTC"_s, u"2026-01-21T00:00:00Z"_s, u"2026-01-21T00:00:00Z"_s},
      {"the last", u"UTC"_s, u"2026-01-21T23:59:59.999Z"_s, u"2026-01-21T00:00:00Z"_s},
      {"east", u"Asia/Tokyo"_s, u"2026-01-21T16:00:00Z"_s, u"2026-01-21T15:00:00Z"_s},
      {"west", u"America/New_York"_s, u"2026-01-21T03:00:00Z"_s, u"2026-01-20T05:00:00Z"_s},
      {"three quarters of an hour", u"Asia/Kathmandu"_s, u"2026-01-21T09:30:00Z"_s,
       u"2026-01-20T18:15:00Z"_s},
      {"before 1970", u"Europe/Berlin"_s, u"1969-07-20T20:17:00Z"_s, u"1969-07-19T23:00:00Z"_s},
      {"the day of 23 hours", u"Europe/Berlin"_s, u"2026-03-29T21:59:59Z"_s,
       u"2026-03-28T23:00:00Z"_s},
      {"the day after it", u"Europe/Berlin"_s, u"2026-03-29T22:00:00Z"_s,
       u"2026-03-29T22:00:00Z"_s},
      {"the day of 25 hours", u"Europe/Berlin"_s, u"2026-10-25T22:59:59Z"_s,
       u"2026-10-24T22:00:00Z"_s},
      {"no midnight: the day begins at one", u"America/Sao_Paulo"_s, u"2018-11-04T12:00:00Z"_s,
       u"2018-11-04T03:00:00Z"_s},
      {"the instant before it", u"America/Sao_Paulo"_s, u"2018-11-04T02:59:59Z"_s,
       u"2018-11-03T03:00:00Z"_s},
      {"the hour before midnight twice", u"America/Sao_Paulo"_s, u"2018-02-18T02:30:00Z"_s,
       u"2018-02-17T02:00:00Z"_s},
      {"the midnight after that", u"America/Sao_Paulo"_s, u"2018-02-18T03:00:00Z"_s,
       u"2018-02-18T03:00:00Z"_s},
      {"the hour after midnight twice, the second", u"America/Havana"_s, u"2025-11-02T05:30:00Z"_s,
       u"2025-11-02T04:00:00Z"_s},
      {"the hour after midnight twice, the first", u"America/Havana"_s, u"2025-11-02T04:30:00Z"_s,
       u"2025-11-02T04:00:00Z"_s},
      {"a zone of no name", u"Nowhere/Land"_s, u"2026-01-21T09:30:00Z"_s,
       u"2026-01-21T00:00:00Z"_s},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.what);
    const EnvironmentVariable zone("TZ", row.zone.toLatin1());
    CalendarDays days;
    EXPECT_EQ(shown(days.startOfDay(utc(row.instant))), row.start);
    EXPECT_EQ(shown(days.startOfDay(utc(row.instant), 0)), row.start);
    EXPECT_EQ(days.startOfDay(utc(row.start)), utc(row.start));
    EXPECT_LT(days.startOfDay(utc(row.start).addMSecs(-1)), utc(row.start));
  }
}

TEST(CalendarDays, AreCountedByTheCalendarAndNotByHours) {
  struct Row {
    const char* what;
    QString zone;
    QString instant;
    int days;
    QString start;
  };
  const Row table[] = {
      {"over a leap day", u"UTC"_s, u"2028-03-01T23:00:00Z"_s, -1, u"2028-02-29T00:00:00Z"_s},
      {"over the new year", u"UTC"_s, u"2025-12-31T23:00:00Z"_s, 1, u"2026-01-01T00:00:00Z"_s},
      {"back over the day of 23 hours", u"Europe/Berlin"_s, u"2026-03-30T10:00:00Z"_s, -2,
       u"2026-03-27T23:00:00Z"_s},
      {"on over it, late in the evening", u"Europe/Berlin"_s, u"2026-03-28T22:30:00Z"_s, 2,
       u"2026-03-29T22:00:00Z"_s},
      {"back over the day of 25 hours", u"Europe/Berlin"_s, u"2026-10-26T10:00:00Z"_s, -2,
       u"2026-10-23T22:00:00Z"_s},
      {"into a day without midnight", u"America/Sao_Paulo"_s, u"2018-11-05T12:00:00Z"_s, -1,
       u"2018-11-04T03:00:00Z"_s},
      {"out of a day without midnight", u"America/Sao_Paulo"_s, u"2018-11-04T03:00:00Z"_s, 1,
       u"2018-11-05T02:00:00Z"_s},
      {"from an hour that comes twice", u"America/Sao_Paulo"_s, u"2018-02-18T02:30:00Z"_s, 1,
       u"2018-02-18T03:00:00Z"_s},
      {"into a day that was left out", u"Pacific/Apia"_s, u"2011-12-29T20:00:00Z"_s, 1,
       u"2011-12-30T10:00:00Z"_s},
      {"over a day that was left out", u"Pacific/Apia"_s, u"2011-12-29T20:00:00Z"_s, 2,
       u"2011-12-31T10:00:00Z"_s},
      {"back to the day before one that was left out", u"Pacific/Apia"_s, u"2011-12-31T20:00:00Z"_s,
       -2, u"2011-12-29T10:00:00Z"_s},
      {"back over a day that was left out", u"Pacific/Apia"_s, u"2011-12-31T20:00:00Z"_s, -3,
       u"2011-12-28T10:00:00Z"_s},
      {"90 days", u"Europe/Berlin"_s, u"2026-05-01T10:00:00Z"_s, -89, u"2026-01-31T23:00:00Z"_s},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.what);
    const EnvironmentVariable zone("TZ", row.zone.toLatin1());
    CalendarDays days;
    EXPECT_EQ(shown(days.startOfDay(utc(row.instant), row.days)), row.start);
  }
}

TEST(CalendarDays, TellHourAndWeekdayByTheClocksOfTheZone) {
  struct Row {
    QString zone;
    QString instant;
    int hour;
    int weekday;
  };
  const Row table[] = {
      {u"UTC"_s, u"2026-01-18T00:00:00Z"_s, 0, 1},  // a Sunday
      {u"UTC"_s, u"2026-01-24T23:59:59Z"_s, 23, 7},
      {u"Asia/Tokyo"_s, u"2026-01-24T15:00:00Z"_s, 0, 1},
      {u"America/New_York"_s, u"2026-01-18T04:59:59Z"_s, 23, 7},
      {u"Europe/Berlin"_s, u"2026-03-29T00:59:59Z"_s, 1, 1},
      {u"Europe/Berlin"_s, u"2026-03-29T01:00:00Z"_s, 3, 1},
      {u"Europe/Berlin"_s, u"2026-10-25T00:30:00Z"_s, 2, 1},
      {u"Europe/Berlin"_s, u"2026-10-25T01:30:00Z"_s, 2, 1},
  };
  for (const Row& row : table) {
    SCOPED_TRACE((row.zone + u' ' + row.instant).toStdString());
    const EnvironmentVariable zone("TZ", row.zone.toLatin1());
    CalendarDays days;
    EXPECT_EQ(days.hour(utc(row.instant)), row.hour);
    EXPECT_EQ(days.weekday(utc(row.instant)), row.weekday);
  }
}

// Qt's own time zones say the same, instant by instant through two changes of the clocks, whatever
// was asked for before.
TEST(CalendarDays, AgreeWithAnotherCalendarThroughAYear) {
  for (const char* const zone : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe",
                                 "Asia/Tehran", "America/Santiago"}) {
    SCOPED_TRACE(zone);
    const QTimeZone qtZone(zone);
    ASSERT_TRUE(qtZone.isValid());
    const EnvironmentVariable machinesZone("TZ", zone);
    CalendarDays days;
    const QDateTime first = utc(u"2025-01-01T00:10:00Z"_s);
    for (int step = 0; step < 366 * 8; ++step) {
      // Back and forth, so that the day asked for last is often another.
      const QDateTime instant = first.addSecs(3 * 3600 * (step % 2 == 0 ? step : 366 * 8 - step));
      const QDateTime local = instant.toTimeZone(qtZone);
      ASSERT_EQ(days.startOfDay(instant), local.date().startOfDay(qtZone)) << step;
      ASSERT_EQ(days.hour(instant), local.time().hour()) << step;
      ASSERT_EQ(days.weekday(instant), local.date().dayOfWeek() % 7 + 1) << step;
    }
  }
}

TEST(CalendarDays, FollowTheMachineFromOneZoneToTheNext) {
  const QDateTime noon = utc(u"2026-01-21T12:00:00Z"_s);
  {
    const EnvironmentVariable zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(CalendarDays().hour(noon), 21);
  }
  {
    const EnvironmentVariable zone("TZ", "America/New_York");
    EXPECT_EQ(CalendarDays().hour(noon), 7);
  }
}

}  // namespace
}  // namespace zarvy
