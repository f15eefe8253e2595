#include <string>

#include <gtest/gtest.h>

#include "app/AppStateFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

class PlainExpansion : public AppStateFixture {};

TEST_F(PlainExpansion, CarriesATriggerFromTheLastKeyToTheSound) {
  startWith(u";ty"_s, u"Thank you"_s);
  m_harness.type(u"hi;ty"_s);
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 3);
  EXPECT_EQ(m_harness.monitor.buffer(), u""_s);
  EXPECT_EQ(m_harness.takeJournal(), "print EXPANDING to: 'Thank you...'");
  m_harness.workers.drain();
  EXPECT_EQ(m_harness.takeJournal(),
            "begin 'Thank you'; key 51; sleep 2000; key 51; sleep 2000; key 51; sleep 2000; "
            "sleep 10000; text 'Thank you'; sleep 1000; end");
  m_harness.scheduler.runPending();
  EXPECT_EQ(m_harness.takeJournal(), "sound");
}

TEST_F(PlainExpansion, PutsWhatARegularExpressionHasCapturedIntoTheText) {
  Snippet snippet = m_harness.snippet(u"#(?<number>\\d+)!"_s, u"{{number}} is {{number}}"_s);
  snippet.isRegexTrigger = true;
  startWith(snippet);
  m_harness.type(u"see #42!"_s);
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 4);
  EXPECT_EQ(m_harness.takeJournal(), "print EXPANDING to: '42 is 42...'");
  m_harness.workers.drain();
  EXPECT_EQ(m_harness.takeJournal(),
            "begin '42 is 42'; key 51; sleep 2000; key 51; sleep 2000; key 51; sleep 2000; "
            "key 51; sleep 2000; sleep 10000; text '42 is 42'; sleep 1000; end");
}

TEST_F(PlainExpansion, TakesTheCaretBackToWhereTheReplacementWantsIt) {
  startWith(u";b"_s, u"<b>{{cursor}}e\u0301</b>"_s);
  m_harness.type(u";b"_s);
  EXPECT_EQ(m_harness.takeJournal(), u"print EXPANDING to: '<b>e\u0301</b>...'"_s.toStdString());
  m_harness.workers.drain();
  EXPECT_EQ(m_harness.takeJournal(),
            u"begin '<b>e\u0301</b>'; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; "
            "text '<b>e\u0301</b>'; sleep 1000; sleep 10000; key 123; sleep 1000; key 123; "
            "sleep 1000; key 123; sleep 1000; key 123; sleep 1000; key 123; sleep 1000; end"_s
                .toStdString());
  EXPECT_EQ(m_harness.stats.summary().totalCharactersSaved, 8 - 2);
}

// On a busy machine letters reach the application ahead of the first backspace.
TEST_F(PlainExpansion, DeletesTheTriggerThoughTheUserHasTypedOn) {
  startWith(u";ty"_s, u"Thank you"_s);
  m_harness.type(u";ty"_s);
  m_harness.type(u" s"_s);
  m_harness.workers.drain();
  EXPECT_EQ(m_harness.takeJournal(),
            "print EXPANDING to: 'Thank you...'; "
            "begin 'Thank you'; key 51; sleep 2000; key 51; sleep 2000; key 51; sleep 2000; "
            "sleep 10000; key 51; sleep 2000; key 51; sleep 2000; text 'Thank you'; sleep 1000; "
            "again ' s'; sleep 1000; end");
}

TEST_F(PlainExpansion, LeavesASecondTriggerBehindTheFirstToItsOwnExpansion) {
  startWith(u";a"_s, u"one"_s);
  m_harness.type(u";a;a"_s);
  m_harness.workers.drain();
  const std::string once =
      "begin 'one'; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; text 'one'; sleep 1000; "
      "end";
  EXPECT_EQ(m_harness.takeJournal(),
            "print EXPANDING to: 'one...'; print EXPANDING to: 'one...'; " + once + "; " + once);
}

TEST_F(PlainExpansion, DoesNothingForTypingThatCompletesNoTrigger) {
  startWith(u";ty"_s, u"Thank you"_s);
  m_harness.type(u"nothing ;t y"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(), "");
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 0);
}

TEST_F(PlainExpansion, CountsWhatToDeleteInCharactersAsTheUserPerceivesThem) {
  startWith(u";e\u0301\U0001F1E9\U0001F1EA"_s, u"x"_s);
  state().expansion().handlePotentialTrigger(u"abc;e\u0301\U0001F1E9\U0001F1EA"_s);
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 3);
  m_harness.workers.drain();
  EXPECT_EQ(m_harness.journal.entries().count(u"key 51"_s), 3);
}

TEST_F(PlainExpansion, EmptiesTheBufferOfTheMonitorAtTheMatch) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.type(u"abc"_s);
  EXPECT_EQ(m_harness.monitor.buffer(), u"abc"_s);
  state().expansion().handlePotentialTrigger(u"other text"_s);
  EXPECT_EQ(m_harness.monitor.buffer(), u"abc"_s);
  state().expansion().handlePotentialTrigger(u";ty"_s);
  EXPECT_EQ(m_harness.monitor.buffer(), u""_s);
}

TEST_F(PlainExpansion, RecordsTheExpansionAtOnceWithItsLengthInCharacters) {
  startWith(u";sig"_s, u"e\u0301\U0001F1E9\U0001F1EA234567"_s);
  state().expansion().handlePotentialTrigger(u";sig"_s);
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 1);
  EXPECT_EQ(m_harness.stats.summary().totalCharactersSaved, 8 - 4);
  const QList<SnippetUsage> usages = m_harness.stats.topSnippets(5, 1);
  ASSERT_EQ(usages.size(), 1);
  EXPECT_EQ(usages.front().snippetID, state().library().snippets().front().id);
  m_harness.finish();
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 1);
}

TEST_F(PlainExpansion, RecordsAlsoWhatIsNotInjectedIntoThisProgramsOwnWindow) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.workspace.setFrontmost(RunningApplication{1, u"zarvy"_s, {}, 2});
  m_harness.type(u";ty"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 1);
}

TEST_F(PlainExpansion, RecordsNothingWithoutAnExpansion) {
  startWith(u";ty"_s, u"{{field:Name}}"_s);
  m_harness.type(u"nothing"_s);
  m_harness.type(u";ty"_s);  // waits for a form
  state().expansion().togglePause();
  state().expansion().handlePotentialTrigger(u";ty"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.stats.summary(), StatsSummary());
}

struct PrintCase {
  const char* name;
  QString replacement;
  QString printed;
};

void PrintTo(const PrintCase& printCase, std::ostream* stream) {
  *stream << printCase.name;
}

class PrintedLine : public PlainExpansion, public testing::WithParamInterface<PrintCase> {};

TEST_P(PrintedLine, ShowsTheFirstFiftyCharactersAndAlwaysThreePoints) {
  startWith(u";ty"_s, GetParam().replacement);
  state().expansion().handlePotentialTrigger(u";ty"_s);
  EXPECT_EQ(m_harness.takeJournal(),
            (u"print EXPANDING to: '"_s + GetParam().printed + u"...'"_s).toStdString());
}

const QString fortyNine = u"1234567890123456789012345678901234567890123456789"_s;

INSTANTIATE_TEST_SUITE_P(
    , PrintedLine,
    testing::Values(PrintCase{"EmptyText", u""_s, u""_s},
                    PrintCase{"ShortText", u"ab\nc"_s, u"ab\nc"_s},
                    PrintCase{"FiftyCharacters", fortyNine + u"x"_s, fortyNine + u"x"_s},
                    PrintCase{"FiftyOneCharacters", fortyNine + u"xy"_s, fortyNine + u"x"_s},
                    PrintCase{"AFlagAsTheFiftieth", fortyNine + u"\U0001F1E9\U0001F1EAy"_s,
                              fortyNine + u"\U0001F1E9\U0001F1EA"_s},
                    PrintCase{"ACombiningMarkOnTheFiftieth", fortyNine + u"e\u0301\u0302y"_s,
                              fortyNine + u"e\u0301\u0302"_s}),
    [](const testing::TestParamInfo<PrintCase>& row) { return std::string(row.param.name); });

TEST_F(PlainExpansion, ReadsTheSoundSettingAtTheEndOfTheInjection) {
  startWith(u";ty"_s, u""_s);
  Settings silent;
  silent.soundEnabled = false;
  state().expansion().handlePotentialTrigger(u";ty"_s);
  state().changeSettings(silent);
  m_harness.finish();
  EXPECT_EQ(m_harness.journal.takeEntries().last().toStdString(), "end");

  state().expansion().handlePotentialTrigger(u";ty"_s);
  state().changeSettings(Settings());
  m_harness.finish();
  EXPECT_EQ(m_harness.journal.takeEntries().last().toStdString(), "sound");
}

TEST_F(PlainExpansion, InjectsNothingIntoThisProgramsOwnWindowButSaysSoAllTheSame) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.workspace.setFrontmost(RunningApplication{1, u"zarvy"_s, {}, 2});
  m_harness.type(u";ty"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(), "print EXPANDING to: 'x...'");
}

}  // namespace
}  // namespace zarvy
