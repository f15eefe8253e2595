#include <QDateTime>
#include <QStringList>

#include <gtest/gtest.h>

#include "base/posix/Processes.h"
#include "core/evaluation/JSEvaluator.h"
#include "fakes/RecordingLineOutput.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/TimeZones.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;
using namespace timezones;

class JSTime : public testing::Test {
 protected:
  JSTime() {
    // What a date shows, by each of its fields; "2026-07-01 06:00:00"
    evaluate(
        u"function shown(date) {"
        u"  const two = number => String(number).padStart(2, '0');"
        u"  return [date.getFullYear(), two(date.getMonth() + 1), two(date.getDate())].join('-') +"
        u"    ' ' + [date.getHours(), date.getMinutes(), date.getSeconds()].map(two).join(':');"
        u"}"_s);
  }

  QString evaluate(const QString& expression) { return m_evaluator.evaluate(expression); }

  [[nodiscard]] QString shownAt(const char* instant) {
    return evaluate(u"shown(new Date('%1'))"_s.arg(QLatin1StringView(instant)));
  }

  RecordingLineOutput m_output;
  ChildReaper m_reaper;
  JSEvaluator m_evaluator{
      m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(), {patience, patience}};
};

TEST_F(JSTime, IsByTheRulesOfToday) {
  for (const KnownTime& known : knownTimes) {
    if (!isOfThisSystem(known.zone)) continue;
    const EnvironmentVariable zone("TZ", known.zone);
    EXPECT_EQ(shownAt(known.instant), QLatin1StringView(known.shown)) << known.zone;
  }
}

TEST_F(JSTime, IsThatOfTheSystemInEveryZone) {
  const std::vector<qint64> instants = manyInstants();
  QStringList seconds;
  for (const qint64 instant : instants) seconds.append(QString::number(instant));
  evaluate(u"instants = ["_s + seconds.join(u',') + u']');
  for (const QByteArray& name : manyZones()) {
    SCOPED_TRACE(name.toStdString());
    const EnvironmentVariable zone("TZ", name);
    const QStringList shown =
        evaluate(u"instants.map(second => shown(new Date(second * 1000))).join()"_s).split(u',');
    ASSERT_EQ(shown.size(), static_cast<qsizetype>(instants.size()));
    int wrong = 0;
    for (qsizetype place = 0; place < shown.size() && wrong < 3; ++place) {
      const qint64 instant = instants[static_cast<std::size_t>(place)];
      const QString expected = shownByTheSystem(instant);
      EXPECT_EQ(shown[place], expected) << instant;
      wrong += shown[place] == expected ? 0 : 1;
    }
    // The other way, what is shown leads to a date that shows it.
    EXPECT_EQ(
        evaluate(u"instants.filter(second => {"
                 u"  const date = new Date(second * 1000);"
                 u"  const same = new Date(date.getFullYear(), date.getMonth(),"
                 u"    date.getDate(), date.getHours(), date.getMinutes(), date.getSeconds());"
                 u"  return shown(same) !== shown(date);"
                 u"}).slice(0, 3).join()"_s),
        QString());
  }
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(JSTime, IsTheSameInEveryFunctionOfTheLanguage) {
  const EnvironmentVariable zone("TZ", "America/Mexico_City");
  evaluate(u"date = new Date('2026-07-01T12:00:00Z')"_s);
  EXPECT_EQ(evaluate(u"date.getTimezoneOffset()"_s), u"360"_s);
  EXPECT_EQ(evaluate(u"String(date)"_s),
            u"Wed Jul 01 2026 06:00:00 GMT-0600 (Central Standard Time)"_s);
  EXPECT_EQ(evaluate(u"date.toLocaleTimeString('de')"_s), u"06:00:00"_s);
  EXPECT_EQ(evaluate(u"new Intl.DateTimeFormat('de', {timeStyle: 'long'}).format(date)"_s),
            u"06:00:00 GMT-6"_s);
  EXPECT_EQ(evaluate(u"new Intl.DateTimeFormat('en', {timeStyle: 'short', hour12: false})"
                     u".formatRange(date, new Date(date.getTime() + 3600000))"
                     u".replace(/\\s/g, '')"_s),
            u"06:00–07:00"_s);
  EXPECT_EQ(evaluate(u"Intl.DateTimeFormat().resolvedOptions().timeZone"_s),
            u"America/Mexico_City"_s);
  // A zone that the script names is another one.
  EXPECT_EQ(evaluate(u"date.toLocaleTimeString('de', {timeZone: 'Asia/Tokyo'})"_s), u"21:00:00"_s);
}

// Globals stay, as they do between all scripts.
TEST_F(JSTime, FollowsTheMachineFromOneZoneToTheNext) {
  {
    const EnvironmentVariable zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(evaluate(u"global = 7; shown(new Date(0))"_s), u"1970-01-01 09:00:00"_s);
  }
  {
    const EnvironmentVariable zone("TZ", "EST5EDT,M3.2.0,M11.1.0");
    EXPECT_EQ(evaluate(u"shown(new Date(0))"_s), u"1969-12-31 19:00:00"_s);
    EXPECT_EQ(evaluate(u"global"_s), u"7"_s);
  }
}

TEST_F(JSTime, HasNoEndButThatOfTheLanguage) {
  const EnvironmentVariable zone("TZ", "Europe/Berlin");
  EXPECT_EQ(evaluate(u"new Date(8.64e15).getHours()"_s), u"2"_s);
  EXPECT_EQ(evaluate(u"new Date(-8.64e15).getTimezoneOffset() < 0"_s), u"true"_s);
  EXPECT_EQ(evaluate(u"new Date(8.64e15 + 1).getHours()"_s), u"NaN"_s);
  EXPECT_EQ(evaluate(u"new Date(275760, 8, 13, 2).getTime()"_s), u"8640000000000000"_s);
}

}  // namespace
}  // namespace zarvy
