#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "base/text/CalendarDays.h"
#include "base/text/DateFormatter.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/TimeZones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace timezones;

const RegionalSettings english{"en_US"};

TEST(TimeZones, AreByTheRulesOfToday) {
  const DateFormatter formatter(u"yyyy-MM-dd HH:mm:ss"_s, english);
  for (const KnownTime& known : knownTimes) {
    if (!isOfThisSystem(known.zone)) continue;
    const EnvironmentVariable zone("TZ", known.zone);
    const auto instant = QDateTime::fromString(QLatin1StringView(known.instant), Qt::ISODate);
    EXPECT_EQ(formatter.format(instant), QLatin1StringView(known.shown)) << known.zone;
    EXPECT_EQ(CalendarDays().hour(instant), formatter.format(instant).sliced(11, 2).toInt())
        << known.zone;
  }
}

TEST(TimeZones, AreThoseOfTheSystem) {
  const DateFormatter formatter(u"yyyy-MM-dd HH:mm:ss"_s, english);
  for (const QByteArray& name : manyZones()) {
    SCOPED_TRACE(name.toStdString());
    const EnvironmentVariable zone("TZ", name);
    CalendarDays days;
    int wrong = 0;
    for (const qint64 second : manyInstants()) {
      const auto instant = QDateTime::fromSecsSinceEpoch(second, utcZone);
      const QString expected = shownByTheSystem(second);
      const QString shown = formatter.format(instant);
      EXPECT_EQ(shown, expected) << second;
      EXPECT_EQ(days.hour(instant), expected.sliced(11, 2).toInt()) << second;
      const QDate date = QDate::fromString(expected.first(10), Qt::ISODate);
      EXPECT_EQ(days.weekday(instant), date.dayOfWeek() % 7 + 1) << second;
      // The day begins when the system first shows its date.
      const QDateTime start = days.startOfDay(instant);
      EXPECT_EQ(shownByTheSystem(start.toSecsSinceEpoch()).first(10), expected.first(10)) << second;
      EXPECT_NE(shownByTheSystem(start.toSecsSinceEpoch() - 1).first(10), expected.first(10))
          << second;
      wrong += testing::Test::HasFailure() ? 1 : 0;
      if (wrong > 2) break;
    }
  }
}

}  // namespace
}  // namespace zarvy
