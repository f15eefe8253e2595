#include <gtest/gtest.h>

#include "core/matching/MatchingRound.h"
#include "core/matching/TriggerLibrary.h"
#include "fakes/ManualSteadyClock.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

constexpr qint64 few = 10'000;
constexpr qint64 many = 60'000;

Snippet snippetOf(const QString& trigger, bool isRegexTrigger = true) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.trigger = trigger;
  snippet.isRegexTrigger = isRegexTrigger;
  return snippet;
}

class MatchingRoundTest : public testing::Test {
 protected:
  // A search for `pattern` that needs so much; false where it is stopped before its end.
  bool search(const QString& pattern, std::chrono::nanoseconds time, qint64 steps) {
    m_round.beginSearch();
    m_clock.advance(time);
    const bool mayGoOn = m_round.mayGoOn(steps);
    m_round.endSearch(snippetOf(pattern), !mayGoOn);
    return mayGoOn;
  }

  void compile(const QString& pattern, std::chrono::nanoseconds time, bool succeeds) {
    m_round.beginCompiling();
    m_clock.advance(time);
    m_round.endCompiling(snippetOf(pattern), succeeds);
  }

  [[nodiscard]] QStringList tooSlow() const {
    QStringList patterns;
    for (const Snippet& snippet : m_round.tooSlow()) patterns.append(snippet.trigger);
    return patterns;
  }

  ManualSteadyClock m_clock;
  MatchingRound m_round{m_clock, {u"left out"_s}};
};

TEST_F(MatchingRoundTest, KnowsWhatIsLeftOut) {
  EXPECT_TRUE(m_round.isLeftOut(snippetOf(u"left out"_s)));
  EXPECT_FALSE(m_round.isLeftOut(snippetOf(u"a"_s)));
}

TEST_F(MatchingRoundTest, StopsOnePatternAndLeavesTheOthersTheirTurn) {
  EXPECT_TRUE(search(u"a"_s, 9ms, many));
  EXPECT_FALSE(search(u"b"_s, 10ms, many));
  EXPECT_TRUE(search(u"c"_s, 9ms, many));
  EXPECT_FALSE(m_round.isOver());
  EXPECT_EQ(tooSlow(), QStringList{u"b"_s});
}

TEST_F(MatchingRoundTest, BlamesNoPatternOfLittleWorkForABusyMachine) {
  EXPECT_TRUE(search(u"a"_s, 20ms, few));
  EXPECT_FALSE(search(u"b"_s, 40ms, few)) << "the time for all is used up";
  EXPECT_TRUE(m_round.isOver());
  EXPECT_EQ(tooSlow(), QStringList());
}

TEST_F(MatchingRoundTest, BlamesAllThatWorkedMuchOnceTheTimeOfAllIsUsedUp) {
  for (int pattern = 0; pattern < 6; ++pattern) {
    EXPECT_TRUE(search(QString::number(pattern), 8ms, pattern == 4 ? few : many));
  }
  EXPECT_EQ(tooSlow(), QStringList());
  EXPECT_FALSE(search(u"last"_s, 2ms, many));
  EXPECT_EQ(tooSlow(), (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"5"_s, u"last"_s}));
  EXPECT_FALSE(m_round.isCrowded());
}

TEST_F(MatchingRoundTest, BlamesAPatternThatTakesLongToCompile) {
  compile(u"a"_s, 49ms, true);
  compile(u"b"_s, 50ms, true);
  compile(u"c"_s, 50ms, false);
  EXPECT_EQ(tooSlow(), (QStringList{u"b"_s, u"c"_s}));
}

TEST_F(MatchingRoundTest, BlamesNoPatternForTheTimeThatCompilingTook) {
  EXPECT_TRUE(search(u"a"_s, 5ms, many));
  for (int pattern = 0; pattern < 5; ++pattern) compile(QString::number(pattern), 9ms, true);
  EXPECT_TRUE(m_round.isOver());
  EXPECT_EQ(tooSlow(), QStringList());
  EXPECT_FALSE(m_round.isCrowded());
}

TEST_F(MatchingRoundTest, BlamesAPatternThatLacksMemory) {
  m_round.beginSearch();
  m_round.endSearch(snippetOf(u"a"_s), true);
  EXPECT_EQ(tooSlow(), QStringList{u"a"_s});
}

TEST_F(MatchingRoundTest, IsCrowdedWhereNoneOfManyIsToBlame) {
  for (int pattern = 0; pattern < 100; ++pattern) {
    EXPECT_FALSE(m_round.isCrowded());
    m_round.beginSearch();
    m_clock.advance(500us);
    m_round.endSearch(snippetOf(u"a"_s), false);
  }
  m_round.look();
  EXPECT_TRUE(m_round.isOver());
  EXPECT_TRUE(m_round.isCrowded());
}

class SlowPatternsTest : public testing::Test {
 protected:
  // Whether one of so many times was the one that was too many.
  bool note(const QString& pattern, int times) {
    bool isTooMany = false;
    for (int time = 0; time < times; ++time) isTooMany |= m_patterns.note(pattern);
    return isTooMany;
  }

  void handOver(const QList<Snippet>& snippets) {
    m_patterns.keepThoseOf(TriggerLibrary(snippets).regexes());
  }

  SlowPatterns m_patterns;
};

TEST_F(SlowPatternsTest, LeavesAPatternOutAfterTheThirdTimeAndSaysSoOnce) {
  EXPECT_FALSE(note(u"a+"_s, 2));
  EXPECT_FALSE(note(u"b+"_s, 2));
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>());
  EXPECT_TRUE(note(u"a+"_s, 1));
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>{u"a+"_s});
  EXPECT_FALSE(note(u"a+"_s, 3));
}

TEST_F(SlowPatternsTest, CountsOnOverChangesElsewhere) {
  note(u"a+"_s, 2);
  handOver({snippetOf(u"x"_s), snippetOf(u"a+"_s)});
  EXPECT_TRUE(note(u"a+"_s, 1));
  handOver({snippetOf(u"a+"_s), snippetOf(u"y"_s, false)});
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>{u"a+"_s});
}

TEST_F(SlowPatternsTest, ForgetsAPatternThatIsEdited) {
  note(u"a+"_s, 3);
  note(u"b+"_s, 2);
  handOver({snippetOf(u"a+!"_s), snippetOf(u"b+"_s, false)});
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>());
  EXPECT_FALSE(note(u"a+"_s, 2));
  EXPECT_FALSE(note(u"b+"_s, 2)) << "a literal trigger is no pattern";
}

}  // namespace
}  // namespace zarvy
