#include <QTimeZone>

#include <gtest/gtest.h>

#include "base/text/CalendarArithmetic.h"
#include "base/text/DateFormatter.h"
#include "base/text/RegionalSettings.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const RegionalSettings berlin{"en_US", u"Europe/Berlin"_s};

QDateTime inBerlin(const QString& text) {
  QDateTime time = QDateTime::fromString(text, Qt::ISODate);
  time.setTimeZone(QTimeZone("Europe/Berlin"));
  return time.toUTC();
}

QString sum(CalendarUnit unit, qint64 amount, const QString& start,
            const RegionalSettings& region = berlin) {
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
  const RegionalSettings persian{"fa_IR", u"Europe/Berlin"_s};
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
  EXPECT_EQ(dateByAdding(CalendarUnit::year, 5'000'000, inBerlin(u"2026-01-31T09:00"_s), berlin)
                ->date()
                .year(),
            5'002'026);
}

TEST(DateFormatter, WritesTheStylesOfTheLocale) {
  const QDateTime date = inBerlin(u"2026-01-21T15:04"_s);
  const RegionalSettings german{"de_DE", u"Europe/Berlin"_s};
  EXPECT_EQ(DateFormatter(DateStyle::shortStyle, DateStyle::none, berlin).format(date),
            u"1/21/26"_s);
  EXPECT_EQ(DateFormatter(DateStyle::longStyle, DateStyle::none, german).format(date),
            u"21. Januar 2026"_s);
  EXPECT_EQ(DateFormatter(DateStyle::none, DateStyle::shortStyle, german).format(date), u"15:04"_s);
}

TEST(DateFormatter, WritesPatternsOfAnyLength) {
  const QDateTime date = inBerlin(u"2026-01-21T15:04"_s);
  EXPECT_EQ(DateFormatter(u"yyyy"_s, berlin).format(date), u"2026"_s);
  EXPECT_EQ(DateFormatter(QString(), berlin).format(date), QString());
  const QString quoted = u"'"_s + u"x"_s.repeated(100'000) + u"'"_s;
  EXPECT_EQ(DateFormatter(quoted, berlin).format(date).size(), 100'000);
  EXPECT_EQ(DateFormatter(u"d "_s.repeated(10'000), berlin).format(date),
            u"21 "_s.repeated(10'000));
}

TEST(DateFormatter, TakesTheMachinesTimeZoneWhereNoneIsGiven) {
  const QDateTime date = inBerlin(u"2026-01-21T15:04"_s);
  EXPECT_EQ(DateFormatter(u"HH:mm"_s, {"en_US", {}}).format(date),
            date.toLocalTime().toString(u"HH:mm"_s));
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
