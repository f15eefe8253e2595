// What a library of expensive expressions does to the search for a trigger.

#include <gtest/gtest.h>

#include "core/TextExpansionEngine.h"
#include "core/matching/MatchingRound.h"
#include "core/matching/TriggerLibrary.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

Snippet regexOf(const QString& trigger) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.title = u"title"_s;
  snippet.trigger = trigger;
  snippet.isRegexTrigger = true;
  return snippet;
}

QString leftOutLine(const QString& trigger) {
  return u"Zarvy: Gave up matching regex for snippet 'title' (trigger: "_s + trigger +
         u"): it takes too long, and is left out until it is edited"_s;
}

// Each reading of the clock, so each 10,000 steps of a search, takes one millisecond.
class SlowRegexTest : public testing::Test {
 protected:
  SlowRegexTest() { m_clock.setStep(1ms); }

  // The milliseconds that one search for a trigger takes.
  std::chrono::milliseconds timeOfKey(const QString& text) {
    const auto begin = m_clock.now();
    static_cast<void>(m_engine.findMatch(text));
    return std::chrono::duration_cast<std::chrono::milliseconds>(m_clock.now() - begin);
  }

  // Ends in none of the triggers, and holds what they need.
  const QString m_endlessText = u"!b"_s + QString(48, u'a');

  RecordingLineOutput m_output;
  FakePlaceholders m_placeholders;
  ManualSteadyClock m_clock;
  TextExpansionEngine m_engine{m_output, m_clock, m_placeholders.services()};
};

TEST_F(SlowRegexTest, LeavesAnEndlessExpressionOutAfterThreeTimesAndSaysSoOnce) {
  const QList<Snippet> snippets{regexOf(u"(a+)+!"_s), regexOf(u"aaa"_s)};
  m_engine.setSnippets(snippets);
  for (int time = 1; time <= 5; ++time) {
    const auto match = m_engine.findMatch(m_endlessText);
    ASSERT_TRUE(match) << "the expressions behind it are still tried";
    EXPECT_EQ(match->snippet, snippets.at(1));
    EXPECT_EQ(m_output.takeLines(),
              time == 3 ? QStringList{leftOutLine(u"(a+)+!"_s)} : QStringList());
    EXPECT_EQ(m_engine.findMatch(u"aaa!"_s).has_value(), time < 3);
  }
  EXPECT_EQ(m_engine.matchRegex(snippets.at(0), u"aaa!"_s), std::nullopt);
}

TEST_F(SlowRegexTest, CountsOnWhenTheLibraryChangesElsewhere) {
  const Snippet endless = regexOf(u"(a+)+!"_s);
  for (int time = 1; time <= 5; ++time) {
    m_engine.setSnippets({regexOf(u"%1x"_s.arg(time)), endless});
    static_cast<void>(m_engine.findMatch(m_endlessText));
    EXPECT_EQ(m_engine.findMatch(u"aaa!"_s).has_value(), time < 3);
  }
  EXPECT_EQ(m_output.takeLines(), QStringList{leftOutLine(u"(a+)+!"_s)});
}

TEST_F(SlowRegexTest, TriesAnEditedExpressionAgain) {
  Snippet endless = regexOf(u"(a+)+!"_s);
  m_engine.setSnippets({endless});
  for (int time = 0; time < 3; ++time) static_cast<void>(m_engine.findMatch(m_endlessText));
  endless.trigger = u"a+!"_s;
  m_engine.setSnippets({endless});
  EXPECT_TRUE(m_engine.findMatch(u"aaa!"_s));
}

TEST_F(SlowRegexTest, LimitsTheTimeOfAllExpressionsOfAKey) {
  QList<Snippet> snippets;
  for (int number = 0; number < 200; ++number) {
    snippets.append(regexOf(u"(a+)+[%1]?!"_s.arg(number)));
  }
  m_engine.setSnippets(snippets);
  // The reading that finds the time used up, and those around it.
  constexpr auto limit = MatchingRound::timeOfAll + 5ms;
  for (int key = 0; key < 200; ++key) ASSERT_LE(timeOfKey(m_endlessText), limit);
  EXPECT_LE(timeOfKey(m_endlessText), 10ms) << "all of them are left out by now";
  EXPECT_EQ(m_output.lines().size(), 200);
}

TEST_F(SlowRegexTest, SpreadsTheCompilationOfManyExpressionsOverKeys) {
  QList<Snippet> snippets;
  for (int number = 0; number < 100; ++number) snippets.append(regexOf(u";%1;"_s.arg(number)));
  m_engine.setSnippets(snippets);
  int keys = 1;
  for (; !m_engine.findMatch(u";99;"_s); ++keys) ASSERT_LT(keys, 10);
  EXPECT_GT(keys, 1);
  EXPECT_EQ(m_output.lines(), QStringList()) << "that is no pattern's fault";
}

TEST_F(SlowRegexTest, SaysOnceThatManyExpressionsTakeTooLongTogether) {
  QList<Snippet> snippets;
  for (int number = 0; number < 100; ++number) snippets.append(regexOf(u"\\w%1"_s.arg(number)));
  m_engine.setSnippets(snippets);
  for (int key = 0; key < 10; ++key) static_cast<void>(m_engine.findMatch(u"zz"_s));
  EXPECT_EQ(m_output.lines(), QStringList());
  for (int key = 0; key < 10; ++key) {
    static_cast<void>(m_engine.findMatch(u"0123456789zz"_s));
  }
  EXPECT_EQ(m_output.lines(),
            QStringList{u"Zarvy: Gave up matching some regexes: all of them together take too "
                        "long"_s});
}

TEST_F(SlowRegexTest, AsksNoExpressionForALiteralTrigger) {
  Snippet literal = regexOf(u"aa"_s);
  literal.isRegexTrigger = false;
  m_engine.setSnippets({regexOf(u"(a+)+!"_s), literal});
  for (int key = 0; key < 5; ++key) {
    const auto match = m_engine.findMatch(m_endlessText);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->snippet, literal);
  }
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(SlowRegexTest, NeverAsksAnExpressionThatIsTooLongAndSaysSoOnceForEachLibrary) {
  const Snippet tooLong = regexOf(u"a|"_s + QString(TriggerLibrary::longestPattern - 1, u'b'));
  const Snippet longest = regexOf(u"a|"_s + QString(TriggerLibrary::longestPattern - 2, u'b'));
  const QString line = u"Zarvy: Left out the regex for snippet 'title': it is longer than "_s +
                       QString::number(TriggerLibrary::longestPattern) + u" characters"_s;
  m_engine.setSnippets({tooLong, longest});
  EXPECT_EQ(m_output.takeLines(), QStringList{line});
  const auto match = m_engine.findMatch(u"xa"_s);
  ASSERT_TRUE(match);
  EXPECT_EQ(match->snippet.id, longest.id);
  m_engine.setSnippets({tooLong});
  EXPECT_EQ(m_output.takeLines(), QStringList{line});
  EXPECT_EQ(m_engine.findMatch(u"xa"_s), std::nullopt);
  EXPECT_EQ(m_output.takeLines(), QStringList());
}

}  // namespace
}  // namespace zarvy
