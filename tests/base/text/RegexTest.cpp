#include <gtest/gtest.h>

#include "base/text/Regex.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

std::shared_ptr<const Regex> compiled(const QString& pattern) {
  const Regex::Compilation compilation = Regex::compile(pattern);
  EXPECT_TRUE(std::holds_alternative<std::shared_ptr<const Regex>>(compilation));
  return std::get<std::shared_ptr<const Regex>>(compilation);
}

TEST(Regex, FindsTheLeftmostMatchInUnitsOfUtf16) {
  const RegexSearch search = compiled(u"b+"_s)->firstMatch(u"\U0001F600abbb b");
  ASSERT_EQ(search.outcome, RegexOutcome::matched);
  EXPECT_EQ(search.match.range(), (TextRange{3, 3}));
}

TEST(Regex, TellsTheGroupsThatTookPart) {
  const auto regex = compiled(u"(?<first>a)(?<second>x)?(b)"_s);
  const RegexSearch search = regex->firstMatch(u"zab");
  ASSERT_EQ(search.outcome, RegexOutcome::matched);
  ASSERT_EQ(search.match.groups.size(), 4U);
  EXPECT_EQ(search.match.groups[1], (TextRange{1, 1}));
  EXPECT_EQ(search.match.groups[2], std::nullopt);
  EXPECT_EQ(search.match.groups[3], (TextRange{2, 1}));
  EXPECT_EQ(regex->groupNumber(u"second"_s), 2U);
  EXPECT_EQ(regex->groupNumber(u"third"_s), std::nullopt);
  EXPECT_EQ(regex->groupNumber(QString()), std::nullopt);
}

TEST(Regex, MindsCaseUnlessThePatternSaysOtherwise) {
  EXPECT_EQ(compiled(u"abc"_s)->firstMatch(u"ABC").outcome, RegexOutcome::noMatch);
  EXPECT_EQ(compiled(u"(?i)abc"_s)->firstMatch(u"ABC").outcome, RegexOutcome::matched);
}

TEST(Regex, SearchesAnEmptyText) {
  EXPECT_EQ(compiled(u"a"_s)->firstMatch({}).outcome, RegexOutcome::noMatch);
  EXPECT_EQ(compiled(u"$"_s)->firstMatch({}).outcome, RegexOutcome::matched);
  EXPECT_EQ(compiled(u"$"_s)->firstMatch(QString()).outcome, RegexOutcome::matched);
}

TEST(Regex, ListsAllMatchesEmptyOnesToo) {
  QList<TextRange> ranges;
  for (const RegexMatch& match : compiled(u"a*"_s)->allMatches(u"aaba")) {
    ranges.append(match.range());
  }
  EXPECT_EQ(ranges, (QList<TextRange>{{0, 2}, {2, 0}, {3, 1}, {4, 0}}));
}

TEST(Regex, SaysWhatIsWrongWithAPattern) {
  const Regex::Compilation compilation = Regex::compile(u"a(b"_s);
  ASSERT_TRUE(std::holds_alternative<QString>(compilation));
  EXPECT_EQ(std::get<QString>(compilation), u"U_REGEX_MISMATCHED_PAREN at character 3"_s);
}

TEST(Regex, RefusesAnEmptyPattern) {
  EXPECT_TRUE(std::holds_alternative<QString>(Regex::compile(QString())));
}

// Lets a search go on for so many questions.
class Patience {
 public:
  explicit Patience(int questions) : m_questions(questions) {}

  [[nodiscard]] Regex::MayGoOn mayGoOn() {
    return [this](qint64 steps) {
      m_steps = steps;
      return ++m_asked < m_questions;
    };
  }

  [[nodiscard]] int asked() const { return m_asked; }
  [[nodiscard]] qint64 steps() const { return m_steps; }

 private:
  const int m_questions;
  int m_asked = 0;
  qint64 m_steps = 0;
};

TEST(Regex, GivesUpOnceItMayNotGoOn) {
  const QString text = u"!b"_s + QString(48, u'a');
  for (const QString& pattern :
       {u"(a+)+!$"_s, u"(a|aa)+!$"_s, u"(.*)*!$"_s, u"(\\w+\\s?)+!$"_s, u"(a+a+)+b$"_s,
        u".*.*.*.*[^\\w]$"_s, u"(?:(?:){1000000}){1000000}$"_s}) {
    SCOPED_TRACE(pattern.toStdString());
    const auto regex = compiled(pattern);
    for (int questions : {1, 7}) {
      Patience patience(questions);
      EXPECT_EQ(regex->firstMatch(text, patience.mayGoOn()).outcome, RegexOutcome::gaveUp);
      EXPECT_EQ(patience.asked(), questions);
      EXPECT_GE(patience.steps(), 10'000 * questions);
    }
  }
}

TEST(Regex, SearchesOnAfterItGaveUp) {
  const auto regex = compiled(u"(a+)+!$"_s);
  Patience none(1);
  EXPECT_EQ(regex->firstMatch(u"!b"_s + QString(48, u'a'), none.mayGoOn()).outcome,
            RegexOutcome::gaveUp);
  EXPECT_EQ(regex->firstMatch(u"aaa!", none.mayGoOn()).outcome, RegexOutcome::matched);
  EXPECT_EQ(none.asked(), 1) << "a quick search asks nothing";
}

TEST(Regex, CountsTheStepsOfManyGroupsAsMore) {
  const QString text(50, u'b');
  QString groups;
  for (int group = 0; group < 800; ++group) groups += u"(b)?"_s;
  Patience few(1);
  Patience many(1);
  static_cast<void>(compiled(u"(b+)+!$"_s)->firstMatch(text, few.mayGoOn()));
  static_cast<void>(compiled(groups + u"!$"_s)->firstMatch(text, many.mayGoOn()));
  EXPECT_GT(many.steps(), 50 * few.steps());
}

TEST(Regex, KnowsTextsThatCannotMatch) {
  EXPECT_FALSE(compiled(u"a+!"_s)->canMatch(u"aaa"));
  EXPECT_TRUE(compiled(u"a+!"_s)->canMatch(u"aaa!"));
}

TEST(Regex, SearchesTextWithLoneSurrogatesAndNul) {
  const QString text = u"a"_s + QChar(0xD83D) + QChar(0) + u"b"_s;
  const RegexSearch search = compiled(u"b$"_s)->firstMatch(text);
  ASSERT_EQ(search.outcome, RegexOutcome::matched);
  EXPECT_EQ(search.match.range(), (TextRange{3, 1}));
}

TEST(ReplacementTemplate, ReadsTheSignsThatMeanSomething) {
  struct Row {
    QString replacementTemplate;
    QString expected;
  };
  for (const Row& row : {Row{u""_s, u""_s}, Row{u"plain"_s, u"plain"_s}, Row{u"<$0>"_s, u"<it>"_s},
                         Row{u"$01$00"_s, u"it1it"_s}, Row{u"\\$0"_s, u"$0"_s},
                         Row{u"a\\\\b"_s, u"a\\b"_s}, Row{u"\\a\\n"_s, u"an"_s},
                         Row{u"\\u0041"_s, u"A"_s}, Row{u"\\U0001F600"_s, u"\U0001F600"_s},
                         Row{u"\\user"_s, u"user"_s}, Row{u"end\\"_s, u"end"_s},
                         Row{u"\\\U0001F600"_s, u"\U0001F600"_s}, Row{u"$\u0660"_s, u"it"_s}}) {
    EXPECT_EQ(expandTemplate(row.replacementTemplate, u"it"), row.expected)
        << testing::PrintToString(row.replacementTemplate);
  }
}

TEST(ReplacementTemplate, RefusesWhatIcuRefuses) {
  for (const QString& text : {u"$"_s, u"5 $"_s, u"$ 5"_s, u"$1"_s, u"$9"_s, u"$$0"_s, u"${a}"_s,
                              u"${"_s, u"${}"_s, u"$x"_s}) {
    EXPECT_EQ(expandTemplate(text, u"it"), std::nullopt) << testing::PrintToString(text);
  }
}

TEST(ReplacementTemplate, TakesTheMatchedTextAsItIs) {
  const QString odd = u"$1 \\ \r\n\0"_s + QChar(0xD83D);
  EXPECT_EQ(expandTemplate(u"$0$0"_s, odd), odd + odd);
  EXPECT_EQ(expandTemplate(u"<$0>"_s, {}), u"<>"_s);
  const QString large(1'000'000, u'x');
  EXPECT_EQ(expandTemplate(u"$0"_s, large), large);
}

TEST(ReplacementTemplate, RefusesAResultOfManyMillions) {
  EXPECT_EQ(expandTemplate(u"$0"_s.repeated(100), QString(1'000'000, u'x')), std::nullopt);
}

TEST(ReplacementTemplate, KnowsTheGroupsOfAnExpression) {
  const char* const whole = "\\A<(.*)>";
  EXPECT_EQ(expandTemplate(u"$1, $0, \\$1"_s, u"<a>", whole), u"a, <a>, $1"_s);
  EXPECT_EQ(expandTemplate(u"$2"_s, u"<a>", whole), std::nullopt);
}

}  // namespace
}  // namespace zarvy
