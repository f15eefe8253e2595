#include <QTimeZone>

#include <gtest/gtest.h>

#include "base/text/CalendarArithmetic.h"
#include "base/text/DateFormatter.h"
#include "base/text/RegionalSettings.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/TimeZones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const EnvironmentVariable machinesZone("TZ", "Europe/Berlin");
const RegionalSettings english{"en_US"};

QDateTime inBerlin(const QString& text) {
  QDateTime time = QDateTime::fromString(text, Qt::ISODate);
  time.setTimeZone(QTimeZone("Europe/Berlin"));
  return time.toUTC();
}

QString sum(CalendarUnit unit, qint64 amount, const QString& start,
            const RegionalSettings& region = english) {
  const auto date = dateByAdding(unit, amount, inBerlin(start), region);
  if (!date) return u"none"_s;
  return date->toTimeZone(QTimeZone("Europe/Berlin")).toString(u"yyyy-MM-ddTHH:mm"_s);
}

TEST(CalendarArithmetic, TakesTheLastDayWhereAMonthIsTooShort) {
  EXPECT_EQ(sum(CalendarUnit::month, 1, u"2026-01-31T09:00"_s), u"2026-02-28T09:00"_s);
  EXPECT_EQ(sum(CalendarUnit::month, -11, u"2026-01-31T09:00"_s), u"2025-02-28T09:00"_s);
  EXPECT_EQ(sum(CalendarUnit::year, 1, u"2028-02-29T09:00"_s), u"2029-02-28T09:00"_s);
}

TEST(CalendarArithmetic, KeepsTheTimeOfDayButNotInHours) {
  EXPECT_EQ(sum(CalendarUnit::day, 1, u"2026-03-28T12:00"_s), u"2026-03-29T12:00"_s);
  EXPECT_EQ(sum(CalendarUnit::week, 1, u"2026-03-28T12:00"_s), u"2026-04-04T12:00"_s);
  EXPECT_EQ(sum(CalendarUnit::hour, 24, u"2026-03-28T12:00"_s), u"2026-03-29T13:00"_s);
  EXPECT_EQ(sum(CalendarUnit::minute, -24 * 60, u"2026-10-25T12:00"_s), u"2026-10-24T13:00"_s);
  // 2:30 does not exist that night.
  EXPECT_EQ(sum(CalendarUnit::day, 1, u"2026-03-28T02:30"_s), u"2026-03-29T03:30"_s);
}

TEST(CalendarArithmetic, FollowsTheCalendarOfTheLocale) {
  // The Persian year and the twelfth month end on 20 March 2026.
  const RegionalSettings persian{"fa_IR"};
  EXPECT_EQ(sum(CalendarUnit::month, 1, u"2026-02-20T12:00"_s, persian), u"2026-03-21T12:00"_s);
  EXPECT_EQ(sum(CalendarUnit::month, 1, u"2026-02-20T12:00"_s), u"2026-03-20T12:00"_s);
}

TEST(CalendarArithmetic, HasNoDateBeyondTheCalendar) {
  constexpr qint64 greatest = std::numeric_limits<qint64>::max();
  for (const CalendarUnit unit : {CalendarUnit::minute, CalendarUnit::hour, CalendarUnit::day,
                                  CalendarUnit::week, CalendarUnit::month, CalendarUnit::year}) {
    EXPECT_EQ(sum(unit, greatest, u"2026-01-31T09:00"_s), u"none"_s);
    EXPECT_EQ(sum(unit, -greatest - 1, u"2026-01-31T09:00"_s), u"none"_s);
    EXPECT_EQ(sum(unit, 0, u"2026-01-31T09:00"_s), u"2026-01-31T09:00"_s);
  }
  EXPECT_EQ(dateByAdding(CalendarUnit::year, 5'000'000, inBerlin(u"2026-01-31T09:00"_s), english)
                ->date()
                .year(),
            5'002'026);
}

// Five million years at most, in whatever unit.
TEST(CalendarArithmetic, HasNoDateOfMoreThanTheGreatestAmount) {
  const std::pair<CalendarUnit, qint64> greatest[] = {{CalendarUnit::day, 1'825'000'000},
                                                      {CalendarUnit::week, 260'000'000},
                                                      {CalendarUnit::month, 60'000'000},
                                                      {CalendarUnit::year, 5'000'000}};
  for (const auto& [unit, amount] : greatest) {
    EXPECT_NE(sum(unit, amount, u"2026-01-31T09:00"_s), u"none"_s) << amount;
    EXPECT_EQ(sum(unit, amount + 1, u"2026-01-31T09:00"_s), u"none"_s) << amount;
    EXPECT_EQ(sum(unit, -amount - 1, u"2026-01-31T09:00"_s), u"none"_s) << amount;
  }
}

TEST(DateFormatter, WritesTheStylesOfTheLocale) {
  const QDateTime date = inBerlin(u"2026-01-21T15:04"_s);
  const RegionalSettings german{"de_DE"};
  EXPECT_EQ(DateFormatter(DateStyle::shortStyle, DateStyle::none, english).format(date),
            u"1/21/26"_s);
  EXPECT_EQ(DateFormatter(DateStyle::longStyle, DateStyle::none, german).format(date),
            u"21. Januar 2026"_s);
  EXPECT_EQ(DateFormatter(DateStyle::none, DateStyle::shortStyle, german).format(date), u"15:04"_s);
}

TEST(DateFormatter, WritesPatternsOfAnyLength) {
  const QDateTime date = inBerlin(u"2026-01-21T15:04"_s);
  EXPECT_EQ(DateFormatter(u"yyyy"_s, english).format(date), u"2026"_s);
  EXPECT_EQ(DateFormatter(QString(), english).format(date), QString());
  const QString quoted = u"'"_s + u"x"_s.repeated(100'000) + u"'"_s;
  EXPECT_EQ(DateFormatter(quoted, english).format(date).size(), 100'000);
  EXPECT_EQ(DateFormatter(u"d "_s.repeated(10'000), english).format(date),
            u"21 "_s.repeated(10'000));
}

// A formatter outlives the machine's stay in one zone.
TEST(DateFormatter, FollowsTheMachineFromOneZoneToTheNext) {
  const QDateTime date = inBerlin(u"2026-01-21T15:04"_s);
  const DateFormatter formatter(u"HH:mm VV"_s, english);
  {
    const EnvironmentVariable zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(formatter.format(date), u"23:04 Asia/Tokyo"_s);
  }
  {
    const EnvironmentVariable zone("TZ", "America/New_York");
    EXPECT_EQ(formatter.format(date), u"09:04 America/New_York"_s);
  }
}

TEST(DateFormatter, HasWordsForTheZone) {
  struct Row {
    const char* zone;
    QString date;
    QString expected;
  };
  const Row table[] = {
      {"Europe/Berlin", u"2026-01-21T15:04"_s, u"Central European Standard Time, +01:00"_s},
      {"Europe/Berlin", u"2026-07-21T15:04"_s, u"Central European Summer Time, +02:00"_s},
      {"posix/Europe/Berlin", u"2026-07-21T15:04"_s, u"Central European Summer Time, +02:00"_s},
      {"Europe/Dublin", u"2026-01-21T15:04"_s, u"Greenwich Mean Time, Z"_s},
      {"Europe/Dublin", u"2026-07-21T15:04"_s, u"Irish Standard Time, +01:00"_s},
      {"America/Mexico_City", u"2026-07-21T15:04"_s, u"Central Standard Time, -06:00"_s},
      {"EST5EDT,M3.2.0,M11.1.0", u"2026-07-21T15:04"_s, u"GMT-04:00, -04:00"_s},
  };
  const DateFormatter formatter(u"zzzz, XXX"_s, english);
  for (const Row& row : table) {
    if (!timezones::isOfThisSystem(row.zone)) continue;
    const QDateTime date = inBerlin(row.date);
    const EnvironmentVariable zone("TZ", row.zone);
    EXPECT_EQ(formatter.format(date), row.expected) << row.zone;
  }
}

TEST(RegionalSettings, AreTheOnesOfTheEnvironmentForDates) {
  struct Row {
    const char* all;
    const char* time;
    const char* language;
    QByteArray expected;
  };
  for (const Row& row :
       {Row{"", "", "de_DE.UTF-8", "de_DE"}, Row{"", "fr_FR.UTF-8", "de_DE", "fr_FR"},
        Row{"sv_SE", "fr_FR", "de_DE", "sv_SE"}, Row{"", "", "", "en_US_POSIX"},
        Row{"C.UTF-8", "fr_FR", "de_DE", "en_US_POSIX"}, Row{"POSIX", "", "", "en_US_POSIX"},
        Row{"", "C", "de_DE", "en_US_POSIX"}, Row{"", "", "de_DE@euro", "de_DE_EURO"}}) {
    qputenv("LC_ALL", row.all);
    qputenv("LC_TIME", row.time);
    qputenv("LANG", row.language);
    EXPECT_EQ(RegionalSettings::ofUser().locale, row.expected);
  }
  for (const char* const name : {"LC_ALL", "LC_TIME", "LANG"}) qunsetenv(name);
}

}  // namespace
}  // namespace zarvy
