#include <string>

#include <gtest/gtest.h>

#include "app/AppStateFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr std::chrono::milliseconds delay{100};

const std::string typedDear =
    "begin 'Dear Ada'; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; text 'Dear Ada'; "
    "sleep 1000; end";

class FillInExpansion : public AppStateFixture {
 protected:
  // With the form open for ";d".
  void SetUp() override {
    startWith(u";d"_s, u"Dear {{field:Name}}"_s);
    m_harness.type(u";d"_s);
    EXPECT_EQ(m_harness.takeJournal(), "form ;d gray");
  }

  [[nodiscard]] FakeFillInWindow& form() { return m_harness.fillInWindow; }

  [[nodiscard]] std::string typed() {
    m_harness.workers.drain();
    return m_harness.takeJournal();
  }
};

TEST_F(FillInExpansion, OpensTheFormAndLeavesTheTriggerWhereItIs) {
  ASSERT_TRUE(state().coordinator().pendingExpansion().has_value());
  const PendingExpansion& pending = *state().coordinator().pendingExpansion();
  EXPECT_EQ(pending.snippet.trigger, u";d"_s);
  ASSERT_EQ(pending.fields.size(), 1);
  EXPECT_EQ(pending.fields[0].name, u"Name"_s);
  EXPECT_EQ(pending.targetApp, m_harness.workspace.frontmostApplication());
  EXPECT_EQ(pending.matchLength, 2);
  EXPECT_TRUE(state().coordinator().showingFillInForm());
  EXPECT_EQ(m_harness.monitor.buffer(), u""_s);
  EXPECT_EQ(typed(), "");
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 0);
}

TEST_F(FillInExpansion, TypesTheAnswersOnceTheWindowHasHadTimeToClose) {
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  EXPECT_EQ(state().coordinator().pendingExpansion(), std::nullopt);
  EXPECT_FALSE(state().coordinator().showingFillInForm());
  EXPECT_EQ(m_harness.takeJournal(), "form closes");
  m_harness.scheduler.advance(delay - std::chrono::milliseconds{1});
  EXPECT_EQ(typed(), "");
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 0);
  m_harness.scheduler.advance(std::chrono::milliseconds{1});
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 1);
  EXPECT_EQ(typed(), typedDear);
  m_harness.scheduler.runPending();
  EXPECT_EQ(typed(), "sound");
}

// The form was in front meanwhile.
TEST_F(FillInExpansion, CallsTheApplicationBackThatWasInFront) {
  m_harness.workspace.setFrontmost(RunningApplication{20, u"other"_s, u"other"_s, 2});
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "form closes; activate ; sleep 50000; " + typedDear);
}

// On a slow machine the user types on before the form has the keyboard.
TEST_F(FillInExpansion, DeletesWhatWasTypedAheadOfTheFormAndGivesItToTheForm) {
  m_harness.source.type(u"A"_s);
  m_harness.source.type(u"d"_s);
  EXPECT_EQ(form().takeTypedAhead(), u"Ad"_s);
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(),
            "form closes; begin 'Dear Ada'; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; "
            "key 51; sleep 2000; key 51; sleep 2000; text 'Dear Ada'; sleep 1000; end");
}

TEST_F(FillInExpansion, TypesAgainWhatWasTypedAheadOfTheFormButCameTooLateForIt) {
  EXPECT_EQ(form().takeTypedAhead(), u""_s);
  m_harness.source.type(u"A"_s);
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(),
            "form closes; begin 'Dear Ada'; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; "
            "key 51; sleep 2000; text 'Dear Ada'; sleep 1000; again 'A'; sleep 1000; end");
}

TEST_F(FillInExpansion, DeletesNothingAndTypesNothingWhereItIsCancelled) {
  form().pressCancel();
  EXPECT_EQ(state().coordinator().pendingExpansion(), std::nullopt);
  EXPECT_FALSE(state().coordinator().showingFillInForm());
  EXPECT_FALSE(form().isOpen());
  m_harness.scheduler.advance(std::chrono::seconds(1));
  EXPECT_EQ(typed(), "form closes");
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 0);
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 2);
}

TEST_F(FillInExpansion, MayBeCancelledAgainAndAgain) {
  state().coordinator().cancelFillIn();
  state().coordinator().cancelFillIn();
  EXPECT_EQ(m_harness.takeJournal(), "form closes");
}

// The buffer was emptied at the match.
TEST_F(FillInExpansion, DoesNotComeBackWithTypingOnBehindTheKeptTrigger) {
  form().pressCancel();
  m_harness.type(u"d"_s);
  EXPECT_EQ(m_harness.takeJournal(), "form closes");
}

TEST_F(FillInExpansion, IgnoresAnswersToAFormThatIsNoLongerThere) {
  form().pressCancel();
  state().coordinator().submitFillIn({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "form closes");
}

TEST_F(FillInExpansion, TakesTheFormOfASecondTriggerInPlaceOfTheFirst) {
  m_harness.type(u"x;d"_s);
  EXPECT_EQ(m_harness.takeJournal(), "form closes; form ;d gray");
  ASSERT_TRUE(state().coordinator().pendingExpansion().has_value());
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "form closes; " + typedDear);
}

TEST_F(FillInExpansion, OutlivesTheSnippetThatItIsFor) {
  state().operations().deleteSnippet(state().library().snippets().front().id);
  EXPECT_TRUE(form().isOpen());
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "form closes; " + typedDear);
}

TEST_F(FillInExpansion, TypesAnswersGivenDuringAPauseButWithoutTheSound) {
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  EXPECT_TRUE(form().isOpen());
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "form closes; " + typedDear);
  m_harness.scheduler.runPending();
  EXPECT_EQ(typed(), "");
}

TEST_F(FillInExpansion, TellsOfTheFormOnceAtItsBeginningAndOnceAtItsEnd) {
  int expansions = 0;
  int forms = 0;
  QObject::connect(&state().coordinator(), &ExpansionCoordinator::pendingExpansionChanged, &state(),
                   [&] {
                     ++expansions;
                     EXPECT_EQ(state().coordinator().pendingExpansion().has_value(),
                               state().coordinator().showingFillInForm());
                   });
  QObject::connect(&state().coordinator(), &ExpansionCoordinator::showingFillInFormChanged,
                   &state(), [&forms] { ++forms; });
  form().pressCancel();
  m_harness.type(u";d"_s);
  EXPECT_EQ(expansions, 2);
  EXPECT_EQ(forms, 2);
}

TEST_F(FillInExpansion, DoesNothingOnceTheStateIsGone) {
  m_harness.state.reset();
  form().pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "form closes");
}

class FillInRoad : public AppStateFixture {};

TEST_F(FillInRoad, OpensNothingWhereTheStateGoesBeforeTheFormComes) {
  startWith(u";d"_s, u"Dear {{field:Name}}"_s);
  m_harness.type(u";"_s);
  m_harness.source.type(u"d"_s);
  state().expansion().handlePotentialTrigger(u";d"_s);
  m_harness.state.reset();
  m_harness.scheduler.runPending();
  EXPECT_EQ(m_harness.takeJournal(), "");
}

// The offset counts from behind the first one, with the ten characters of the second.
TEST_F(FillInRoad, PutsTheCaretWhereTheFirstOfTwoMarkersStands) {
  startWith(u";c"_s, u"{{field:A}}b{{cursor}}c{{cursor}}d"_s);
  m_harness.type(u";c"_s);
  m_harness.fillInWindow.pressExpand({{u"A"_s, u"a"_s}});
  (void)m_harness.takeJournal();
  m_harness.scheduler.advance(delay);
  m_harness.workers.drain();
  const QStringList entries = m_harness.journal.takeEntries();
  EXPECT_EQ(entries.front(), u"begin 'abcd'"_s);
  EXPECT_EQ(entries.count(u"key 123"_s), 1 + 10 + 1);
}

TEST_F(FillInRoad, OpensTheFormInTheColourOfTheFolder) {
  const Folder folder{QUuid::createUuid(), u"F"_s, FolderColor::pink, 0};
  Snippet inFolder = m_harness.snippet(u";a"_s, u"{{field:A}}"_s);
  inFolder.folderID = folder.id;
  Snippet inLostFolder = m_harness.snippet(u";b"_s, u"{{field:A}}"_s);
  inLostFolder.folderID = QUuid::createUuid();
  m_harness.load({{inFolder, inLostFolder}, {folder}, {}, {}});
  (void)m_harness.takeJournal();
  m_harness.type(u";a"_s);
  EXPECT_EQ(m_harness.takeJournal(), "form ;a pink");
  m_harness.type(u";b"_s);
  EXPECT_EQ(m_harness.takeJournal(), "form closes; form ;b gray");
}

TEST_F(FillInRoad, AsksForTheFieldsOfNestedSnippetsAndOfCaptures) {
  Snippet outer = m_harness.snippet(u"#(?<n>\\d)"_s, u"{{n}}{{snippet:in}}"_s);
  outer.isRegexTrigger = true;
  m_harness.load({{outer, m_harness.snippet(u"in"_s, u"{{field:A}}"_s)}, {}, {}, {}});
  m_harness.type(u"#7"_s);
  ASSERT_TRUE(state().coordinator().pendingExpansion().has_value());
  EXPECT_EQ(state().coordinator().pendingExpansion()->snippet.replacement, u"7{{field:A}}"_s);
}

}  // namespace
}  // namespace zarvy
