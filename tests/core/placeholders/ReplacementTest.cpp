#include <gtest/gtest.h>

#include "base/text/Regex.h"
#include "core/placeholders/RandomText.h"
#include "core/placeholders/Replacement.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView openers[] = {u"{{#", u"{{x:"};

// The rule as it reads: a search of the whole text for every single placeholder.
QString byTheRule(const QString& text, const Regex& expression,
                  const std::function<QString(const QString&)>& valueOf) {
  QString result = text;
  for (const RegexMatch& match : expression.allMatches(text)) {
    const QString literal = text.sliced(match.range().start, match.range().length);
    result.replace(literal, valueOf(literal));
  }
  return result;
}

// Few pieces, so that values and what stands around them meet in every way they can.
TEST(Replacement, GivesWhatASearchForEachPlaceholderWould) {
  const auto expression =
      std::get<std::shared_ptr<const Regex>>(Regex::compile(u"\\{\\{(?:#|x:)([^}]+)\\}\\}"_s));
  RandomText random({u"{{#"_s, u"}}"_s, u"a"_s, u"{{#a}}"_s, u"{{x:b}}"_s, u"{"_s, u"{{"_s, u"#"_s,
                     u"{{x"_s, u":"_s, u"b}}"_s, u"#a}}"_s, u"}"_s, u" "_s});
  for (int index = 0; index < 50'000; ++index) {
    const QStringList values{random.next(2), random.next(2), random.next(2), u""_s};
    const auto valueOf = [&values](const QString& literal) {
      return values.at(static_cast<qsizetype>(qHash(literal, 0) % 4));
    };
    const QString text = random.next(12);
    ExpansionLimit limit;
    const QString replaced = replacePlaceholders(
        text, {openers},
        [&](const Placeholder& placeholder) { return valueOf(placeholder.literal.toString()); },
        limit);
    ASSERT_EQ(replaced, byTheRule(text, *expression, valueOf))
        << testing::PrintToString(text) << testing::PrintToString(values);
  }
}

TEST(Replacement, AsksForEveryPlaceholderAndLetsTheFirstOfEqualOnesStand) {
  QStringList asked;
  ExpansionLimit limit;
  const auto valueOf = [&asked](const Placeholder& placeholder) {
    asked.append(placeholder.argument.toString());
    return QString::number(asked.size());
  };
  EXPECT_EQ(replacePlaceholders(u"{{#a}} {{#b}} {{#a}}"_s, {openers}, valueOf, limit), u"1 2 1"_s);
  EXPECT_EQ(asked, (QStringList{u"a"_s, u"b"_s, u"a"_s}));
}

TEST(Replacement, LeavesThePlaceholderWhereTheTextWouldBecomeTooLong) {
  const QString value(ExpansionLimit::longestText / 2, u'x');
  ExpansionLimit limit;
  const auto valueOf = [&value](const Placeholder&) { return value; };
  EXPECT_EQ(replacePlaceholders(u"{{#a}}{{#b}}{{#c}}!"_s, {openers}, valueOf, limit),
            value + u"{{#b}}{{#c}}!"_s);
}

TEST(Replacement, GoesOnBehindAPlaceholderWhoseValueIsTooLong) {
  ExpansionLimit limit;
  QStringList asked;
  const auto valueOf = [&asked](const Placeholder& placeholder) {
    asked.append(placeholder.argument.toString());
    return placeholder.argument == u"long" ? QString(ExpansionLimit::longestText, u'x') : u"1"_s;
  };
  EXPECT_EQ(replacePlaceholders(u"{{#a}}{{#long}}{{#b}}!"_s, {openers}, valueOf, limit),
            u"1{{#long}}1!"_s);
  EXPECT_EQ(asked, (QStringList{u"a"_s, u"long"_s, u"b"_s}));
}

// The values of both together are just as long as a text may be; with the rest the first is not.
TEST(Replacement, GoesOnBehindAValueThatHasNoRoomBesideTheRest) {
  ExpansionLimit limit;
  const auto valueOf = [](const Placeholder& placeholder) {
    return placeholder.argument == u"long" ? QString(ExpansionLimit::longestText - 1, u'x')
                                           : u"1"_s;
  };
  EXPECT_EQ(replacePlaceholders(u"{{#long}}{{#b}}!"_s, {openers}, valueOf, limit),
            u"{{#long}}1!"_s);
}

TEST(Replacement, StopsReplacingThatWouldNeverEnd) {
  ExpansionLimit limit;
  const auto valueOf = [](const Placeholder& placeholder) {
    return placeholder.literal.toString().repeated(2);
  };
  const QString text =
      replacePlaceholders(u"{{#a}}"_s.repeated(100) + u"end"_s, {openers}, valueOf, limit);
  EXPECT_LE(text.size(), ExpansionLimit::longestText);
  EXPECT_GT(text.size(), ExpansionLimit::longestText / 2);
  EXPECT_TRUE(text.endsWith(u"{{#a}}end"));
}

TEST(Replacement, TakesNoPartOfALongerPlaceholder) {
  QString text = u"{{#a}}{{#ab}}{{{#a}}}"_s;
  ExpansionLimit limit;
  EXPECT_TRUE(replaceLiteral(text, u"{{#a}}", u"$1", limit));
  EXPECT_EQ(text, u"$1{{#ab}}{$1}"_s);
}

TEST(Replacement, LeavesTheTextAloneOnceTheLimitIsUsedUp) {
  QString text = u"{{#a}}"_s;
  ExpansionLimit limit(11);
  EXPECT_TRUE(replaceLiteral(text, u"{{#a}}", u"{{#b}}", limit));
  EXPECT_FALSE(replaceLiteral(text, u"{{#b}}", u"{{#c}}", limit));
  EXPECT_EQ(text, u"{{#b}}"_s);
}

}  // namespace
}  // namespace zarvy
