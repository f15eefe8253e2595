#include <set>
#include <string>

#include <QRegularExpression>

#include <gtest/gtest.h>
#include <unicode/ucal.h>
#include <unicode/udat.h>

#include "base/posix/Processes.h"
#include "core/evaluation/JSEvaluator.h"
#include "fakes/RecordingLineOutput.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;

class NativeFunctions : public testing::Test {
 protected:
  [[nodiscard]] ScriptWorkerCommand commandFor(const char* locale) const {
    ScriptWorkerCommand command = ScriptWorkerCommand::besideThisProgram();
    command.locale = locale;
    return command;
  }

  [[nodiscard]] QString evaluate(const QString& expression) {
    return m_evaluator.evaluate(expression);
  }

  RecordingLineOutput m_output;
  ChildReaper m_reaper;
  JSEvaluator m_evaluator{m_output, m_reaper, commandFor(""), ScriptLimits{patience, patience}};
};

QString present(UDateFormatStyle date, UDateFormatStyle time, const char* locale,
                const char16_t* zone) {
  UErrorCode status = U_ZERO_ERROR;
  UDateFormat* format = udat_open(time, date, locale, zone, -1, nullptr, 0, &status);
  char16_t text[200];
  udat_format(format, ucal_getNow(), text, 200, nullptr, &status);
  udat_close(format);
  EXPECT_TRUE(U_SUCCESS(status));
  return QString::fromUtf16(text);
}

struct Region {
  const char* locale;
  const char* zone;
  const char16_t* zone16;
};

class NativeDates : public NativeFunctions, public testing::WithParamInterface<Region> {};

TEST_P(NativeDates, AreInTheStylesOfTheUsersRegion) {
  const Region region = GetParam();
  const EnvironmentVariable zone("TZ", region.zone);
  JSEvaluator evaluator(m_output, m_reaper, commandFor(region.locale), {patience, patience});
  struct Function {
    QString call;
    UDateFormatStyle date;
    UDateFormatStyle time;
  };
  for (const Function& function : {Function{u"now()"_s, UDAT_MEDIUM, UDAT_SHORT},
                                   Function{u"today()"_s, UDAT_MEDIUM, UDAT_NONE},
                                   Function{u"time()"_s, UDAT_NONE, UDAT_SHORT}}) {
    // A minute may go by between two looks at the clock, but not two of them at every try.
    QString expected;
    QString text;
    EXPECT_TRUE(eventually([&] {
      expected = present(function.date, function.time, region.locale, region.zone16);
      text = evaluator.evaluate(function.call);
      return expected == present(function.date, function.time, region.locale, region.zone16);
    }));
    EXPECT_EQ(text, expected);
    EXPECT_FALSE(text.isEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(, NativeDates,
                         testing::Values(Region{"en_US", "America/New_York", u"America/New_York"},
                                         Region{"de_DE", "Europe/Berlin", u"Europe/Berlin"},
                                         Region{"ja_JP", "Asia/Tokyo", u"Asia/Tokyo"},
                                         Region{"ar_EG", "Africa/Cairo", u"Africa/Cairo"},
                                         Region{"fa_IR", "Asia/Kathmandu", u"Asia/Kathmandu"},
                                         Region{"en_US_POSIX", "Pacific/Kiritimati",
                                                u"Pacific/Kiritimati"}),
                         [](const auto& test) { return test.param.locale; });

TEST_F(NativeFunctions, TakeTheRegionOfTheEnvironmentWhereNoneIsGiven) {
  const EnvironmentVariable language("LC_ALL", "fr_FR.UTF-8");
  const EnvironmentVariable zone("TZ", "Asia/Tokyo");
  QString expected;
  QString text;
  EXPECT_TRUE(eventually([&] {
    expected = present(UDAT_MEDIUM, UDAT_SHORT, "fr_FR", u"Asia/Tokyo");
    text = evaluate(u"now()"_s);
    return expected == present(UDAT_MEDIUM, UDAT_SHORT, "fr_FR", u"Asia/Tokyo");
  }));
  EXPECT_EQ(text, expected);
}

TEST_F(NativeFunctions, ShareTheTimeZoneWithTheLanguagesOwnDates) {
  const EnvironmentVariable zone("TZ", "Asia/Dubai");
  JSEvaluator evaluator(m_output, m_reaper, commandFor("en_US"), {patience, patience});
  EXPECT_EQ(evaluator.evaluate(u"new Date(2026, 0, 1).getTimezoneOffset()"_s), u"-240"_s);
  EXPECT_EQ(evaluator.evaluate(u"Intl.DateTimeFormat().resolvedOptions().timeZone"_s),
            u"Asia/Dubai"_s);
}

TEST_F(NativeFunctions, AreFunctionsLikeOthers) {
  EXPECT_EQ(evaluate(u"[now, today, time, random, uuid].every(f => f instanceof Function)"_s),
            u"true"_s);
  EXPECT_EQ(evaluate(u"[1, 2].map(uuid).length"_s), u"2"_s);
  EXPECT_EQ(evaluate(u"now = () => 'mine'; now()"_s), u"mine"_s);
  EXPECT_EQ(evaluate(u"now()"_s), u"mine"_s);
}

struct Draw {
  const char* name;
  QString call;
  QString expected;
};

class RandomNumber : public NativeFunctions, public testing::WithParamInterface<Draw> {};

TEST_P(RandomNumber, IsTheOnlyOnePossible) {
  EXPECT_EQ(evaluate(GetParam().call), GetParam().expected);
  EXPECT_EQ(m_output.lines(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    , RandomNumber,
    testing::Values(Draw{"BetweenEquals", u"random(5, 5)"_s, u"5"_s},
                    Draw{"BetweenAFirstThatIsGreater", u"random(9, 2)"_s, u"9"_s},
                    Draw{"BetweenNegatives", u"random(-3, -3)"_s, u"-3"_s},
                    Draw{"BetweenFractions", u"random(1.9, 1.2)"_s, u"1"_s},
                    Draw{"BetweenNegativeFractions", u"random(-1.9, -1.2)"_s, u"-1"_s},
                    Draw{"BetweenTexts", u"random('7', '7')"_s, u"7"_s},
                    Draw{"BetweenNothing", u"random()"_s, u"0"_s},
                    Draw{"BetweenNoNumbers", u"random(NaN, 'x')"_s, u"0"_s},
                    Draw{"BetweenOneAndNothing", u"random(4)"_s, u"4"_s},
                    Draw{"BeyondTheIntegers", u"random(1e300, Infinity)"_s, u"9007199254740991"_s},
                    Draw{"BelowTheIntegers", u"random(-Infinity, -1e300)"_s,
                         u"-9007199254740991"_s}),
    [](const auto& test) { return test.param.name; });

TEST_F(NativeFunctions, DrawEveryNumberOfTheClosedRange) {
  // That one of six stays out of 500 draws has a chance of less than 1 in 10 to the 38.
  EXPECT_EQ(
      evaluate(u"[...new Set(Array.from({length: 500}, () => random(1, 6)))].sort().join()"_s),
      u"1,2,3,4,5,6"_s);
  EXPECT_EQ(evaluate(u"Array.from({length: 500}, () => random(-1e15, 1e15))"
                     u".every(n => Number.isInteger(n) && Math.abs(n) <= 1e15)"_s),
            u"true"_s);
}

TEST_F(NativeFunctions, ThrowWhereAnArgumentIsNoNumberAtAll) {
  EXPECT_EQ(evaluate(u"random(Symbol(), 1)"_s), u""_s);
  EXPECT_EQ(m_output.takeLines(),
            QStringList(u"JS Exception: TypeError: Cannot convert a symbol to a number"_s));
  EXPECT_EQ(evaluate(u"try { random(1, {valueOf() { throw 'mine' }}) } catch (e) { e }"_s),
            u"mine"_s);
}

TEST_F(NativeFunctions, GiveAFreshIdentifierEachTime) {
  static const QRegularExpression form(
      u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s);
  std::set<QString> seen;
  for (int i = 0; i < 200; ++i) {
    const QString text = evaluate(u"uuid()"_s);
    EXPECT_TRUE(form.match(text).hasMatch()) << text.toStdString();
    seen.insert(text);
  }
  EXPECT_EQ(seen.size(), 200U);
}

}  // namespace
}  // namespace zarvy
