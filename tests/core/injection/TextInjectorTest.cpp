#include <string>

#include <gtest/gtest.h>

#include "core/injection/TextInjector.h"
#include "core/injection/TypedSince.h"
#include "fakes/FakeInputMethod.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingKeyEventPoster.h"
#include "fakes/RecordingSleeper.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

const RunningApplication editor{10, u"editor"_s, u"Editor"_s, 1};
const RunningApplication browser{20, u"browser"_s, u"Browser"_s, 2};

class TextInjectorTest : public testing::Test {
 protected:
  TextInjectorTest() {
    m_workspace.setFrontmost(editor);
    m_injector->onInjectionComplete = [this] { m_journal.add(u"complete"_s); };
  }

  // Lets the injections begun so far run to their end, completion included.
  void finish() {
    m_workers.drain();
    m_scheduler.runPending();
  }

  [[nodiscard]] std::string takeJournal() {
    return m_journal.takeEntries().join(u"; "_s).toStdString();
  }

  Journal m_journal;
  RecordingKeyEventPoster m_poster{m_journal};
  RecordingSleeper m_sleeper{m_journal};
  FakeWorkspace m_workspace{m_journal};
  FakeInputMethod m_inputMethod;
  ManualScheduler m_scheduler;
  ManualWorkerPool m_workers;
  std::shared_ptr<TextInjector> m_injector =
      TextInjector::make(m_poster, m_workspace, m_inputMethod, m_sleeper, m_workers, m_scheduler);
};

TEST_F(TextInjectorTest, RunsThroughItsPhasesInOrder) {
  m_injector->inject(u"Hi\nyou"_s, 2, {}, 1);
  finish();
  EXPECT_EQ(takeJournal(),
            "begin 'Hi\nyou'; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; "
            "text 'Hi'; sleep 1000; key 36; sleep 1000; text 'you'; sleep 1000; "
            "sleep 10000; key 123; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, CutsASurrogatePairBetweenTwoRuns) {
  m_injector->inject(u"0123456789012345678\U0001F600!"_s, 0, {}, {});
  finish();
  EXPECT_EQ(takeJournal(),
            "begin '0123456789012345678\xF0\x9F\x98\x80!'; sleep 10000; "
            "text '0123456789012345678<d83d>'; sleep 1000; text '<de00>!'; sleep 1000; "
            "end; complete");
}

TEST_F(TextInjectorTest, HandsOnLoneSurrogatesNulAndCarriageReturnAsTheyAre) {
  QString text = u"a"_s;
  text += QChar(0xD83D);
  text += QChar(0);
  text += u'\r';
  text += QChar(0xDE00);
  m_injector->inject(text, 0, editor, {});
  finish();
  const QStringList entries = m_journal.takeEntries();
  EXPECT_EQ(entries.value(2).toStdString(), "text 'a<d83d><0000><000d><de00>'");
  EXPECT_EQ(entries.size(), 6);
}

TEST_F(TextInjectorTest, ReturnsAtOnceAndCompletesOnTheMainThreadOnly) {
  m_injector->inject(u"a"_s, 0, {}, {});
  EXPECT_EQ(takeJournal(), "");
  m_workers.drain();
  EXPECT_EQ(takeJournal(), "begin 'a'; sleep 10000; text 'a'; sleep 1000; end");
  m_scheduler.runPending();
  EXPECT_EQ(takeJournal(), "complete");
}

TEST_F(TextInjectorTest, EmptyTextWithoutBackspacesStillCompletes) {
  m_injector->inject(u""_s, 0, {}, {});
  finish();
  EXPECT_EQ(takeJournal(), "begin ''; sleep 10000; end; complete");
}

TEST_F(TextInjectorTest, ActivatesATargetThatIsNotInFrontAndLetsItSettle) {
  m_injector->inject(u"a"_s, 1, browser, {});
  finish();
  EXPECT_EQ(takeJournal(),
            "activate Browser; sleep 50000; begin 'a'; key 51; sleep 2000; sleep 10000; "
            "text 'a'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, SendsNothingToWhatIsInFrontInPlaceOfATargetThatHasGone) {
  m_workspace.setGone(browser);
  m_injector->inject(u"a"_s, 1, browser, 1);
  finish();
  EXPECT_EQ(takeJournal(), "activate Browser");
}

// Neither the sound comes, which is for a text that was typed.
TEST_F(TextInjectorTest, SendsNothingWhileAnInputMethodMakesOtherTextOfTheKeys) {
  m_inputMethod.setComposing(true);
  m_injector->inject(u"a"_s, 1, {}, 1);
  finish();
  EXPECT_EQ(takeJournal(), "");
  m_injector->inject(u"a"_s, 1, browser, 1);
  finish();
  EXPECT_EQ(takeJournal(), "activate Browser; sleep 50000");
  m_inputMethod.setComposing(false);
  m_injector->inject(u"a"_s, 0, {}, {});
  finish();
  EXPECT_EQ(takeJournal(), "begin 'a'; sleep 10000; text 'a'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, AnActiveTargetCostsNoPause) {
  m_injector->inject(u"a"_s, 0, editor, {});
  finish();
  EXPECT_EQ(takeJournal(), "begin 'a'; sleep 10000; text 'a'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, TakesTheApplicationInFrontAtTheMomentOfTheCall) {
  m_injector->inject(u"a"_s, 0, {}, {});
  m_workspace.setFrontmost(browser);
  finish();
  EXPECT_EQ(takeJournal(),
            "activate Editor; sleep 50000; begin 'a'; sleep 10000; text 'a'; sleep 1000; end; "
            "complete");
}

TEST_F(TextInjectorTest, DoesNothingWithoutAFrontmostApplication) {
  m_workspace.setFrontmost({});
  m_injector->inject(u"a"_s, 1, {}, {});
  EXPECT_EQ(m_workers.pendingCount(), 0U);
  finish();
  EXPECT_EQ(takeJournal(), "");
}

TEST_F(TextInjectorTest, DoesNothingInThisProgramsOwnWindow) {
  m_workspace.setFrontmost(RunningApplication{30, u"zarvy"_s, u"Zarvy"_s, 3});
  m_injector->inject(u"a"_s, 1, {}, {});
  EXPECT_EQ(m_workers.pendingCount(), 0U);
}

TEST_F(TextInjectorTest, DoesNothingForThisProgramAsTheNamedTarget) {
  m_injector->inject(u"a"_s, 1, RunningApplication{30, u"zarvy"_s, u"Zarvy"_s, 3}, {});
  EXPECT_EQ(m_workers.pendingCount(), 0U);
}

TEST_F(TextInjectorTest, TakesTwoAbsentIdentifiersForEqual) {
  m_workspace.setOwnBundleIdentifier({});
  m_injector->inject(u"a"_s, 1, RunningApplication{30, {}, u"Nameless"_s, 3}, {});
  EXPECT_EQ(m_workers.pendingCount(), 0U);
}

TEST_F(TextInjectorTest, TakesOneAbsentIdentifierForDifferent) {
  m_injector->inject(u"a"_s, 0, RunningApplication{30, {}, u"Nameless"_s, 3}, {});
  EXPECT_EQ(m_workers.pendingCount(), 1U);
  m_workspace.setOwnBundleIdentifier({});
  m_injector->inject(u"a"_s, 0, editor, {});
  EXPECT_EQ(m_workers.pendingCount(), 2U);
}

TEST_F(TextInjectorTest, KeepsThePausesOfKeysThatCannotBePressed) {
  m_poster.setCanPress(false);
  m_injector->inject(u"a\nb"_s, 1, {}, 1);
  finish();
  EXPECT_EQ(takeJournal(),
            "begin 'a\nb'; failed key 51; sleep 2000; sleep 10000; failed text 'a'; sleep 1000; "
            "failed key 36; sleep 1000; failed text 'b'; sleep 1000; sleep 10000; "
            "failed key 123; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, CallsTheCompletionThatIsSetAtTheEndAndNoneIfItWasCleared) {
  m_injector->inject(u"a"_s, 0, {}, {});
  m_workers.drain();
  m_injector->onInjectionComplete = [this] { m_journal.add(u"another"_s); };
  m_scheduler.runPending();
  EXPECT_EQ(m_journal.takeEntries().last().toStdString(), "another");

  m_injector->inject(u"a"_s, 0, {}, {});
  m_workers.drain();
  m_injector->onInjectionComplete = nullptr;
  m_scheduler.runPending();
  EXPECT_EQ(m_journal.takeEntries().last().toStdString(), "end");
}

TEST_F(TextInjectorTest, LetsTheCompletionUnsetItself) {
  m_injector->onInjectionComplete = [this, note = u"once"_s] {
    m_injector->onInjectionComplete = nullptr;
    m_journal.add(note);
  };
  m_injector->inject(u""_s, 0, {}, {});
  m_injector->inject(u""_s, 0, {}, {});
  finish();
  EXPECT_EQ(m_journal.entries().count(u"once"_s), 1);
}

TEST_F(TextInjectorTest, WaitsForAnApplicationThatComesToTheFrontLate) {
  m_workspace.setSlow();
  int pauses = 0;
  m_sleeper.setOnSleep([&] {
    if (++pauses == 3) m_workspace.setFrontmost(browser);
  });
  m_injector->inject(u"a"_s, 0, browser, {});
  finish();
  EXPECT_EQ(takeJournal(),
            "activate Browser; sleep 50000; sleep 50000; sleep 50000; begin 'a'; sleep 10000; "
            "text 'a'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, TypesNothingWhereTheApplicationDoesNotComeToTheFront) {
  m_workspace.setSlow();
  m_injector->inject(u"a"_s, 1, browser, {});
  finish();
  EXPECT_EQ(m_journal.entries().filter(u"sleep 50000"_s).size(), 21);
  EXPECT_EQ(m_journal.entries().size(), 22) << "and nothing else but the activation";
}

TEST_F(TextInjectorTest, DeletesWhatCameAheadOfTheBackspacesAndTypesItAgainAtTheCaret) {
  TypedSinceNow typing;
  const auto typed = typing.begin();
  typing.append(u"x");
  typing.append(u" ");
  m_injector->inject(u"abc"_s, 1, {}, 2, typed);
  finish();
  EXPECT_EQ(takeJournal(),
            "begin 'abc'; key 51; sleep 2000; sleep 10000; key 51; sleep 2000; key 51; sleep 2000; "
            "text 'abc'; sleep 1000; sleep 10000; key 123; sleep 1000; key 123; sleep 1000; "
            "again 'x '; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, DeletesWhatCameWhileItDeleted) {
  TypedSinceNow typing;
  const auto typed = typing.begin();
  typing.append(u"x");
  int pauses = 0;
  m_sleeper.setOnSleep([&] {
    if (++pauses == 3) typing.append(u"y");  // behind the deletion of the other
    if (pauses == 5) typing.append(u"z");    // behind the last look
  });
  m_injector->inject(u"abc"_s, 1, {}, {}, typed);
  finish();
  EXPECT_EQ(takeJournal(),
            "begin 'abc'; key 51; sleep 2000; sleep 10000; key 51; sleep 2000; key 51; sleep 2000; "
            "text 'abc'; sleep 1000; again 'xy'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, TypesItAgainAheadOfALongText) {
  const QString twenty = u"abcdefghijklmnopqrst"_s;
  TypedSinceNow typing;
  const auto typed = typing.begin();
  typing.append(u"x");
  m_injector->inject(twenty + twenty + twenty + u'!', 0, {}, {}, typed);
  finish();
  EXPECT_EQ(m_journal.entries().mid(4, 3).join(u"; "_s),
            u"again 'x'; sleep 1000; text '%1'"_s.arg(twenty));
}

TEST_F(TextInjectorTest, TypesItAgainAheadOfATextThatWaitsForShift) {
  TypedSinceNow typing;
  const auto typed = typing.begin();
  typing.append(u"x");
  m_poster.setMustWait(true);
  m_injector->inject(u"abc"_s, 0, {}, {}, typed);
  finish();
  EXPECT_EQ(takeJournal(),
            "begin 'abc'; sleep 10000; key 51; sleep 2000; again 'x'; sleep 1000; text 'abc'; "
            "sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, DoesNotTypeWhatAFormHas) {
  TypedSinceNow typing;
  const auto typed = typing.begin();
  typing.append(u"x");
  EXPECT_EQ(typed->takeForForm(), u"x"_s);
  typing.append(u"y");
  m_injector->inject(u"abc"_s, 1, {}, {}, typed);
  finish();
  EXPECT_EQ(takeJournal(),
            "begin 'abc'; key 51; sleep 2000; sleep 10000; key 51; sleep 2000; key 51; sleep 2000; "
            "text 'abc'; sleep 1000; again 'y'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, StopsDeletingThoughTheUserTypesOn) {
  TypedSinceNow typing;
  const auto typed = typing.begin();
  m_sleeper.setOnSleep([&] { typing.append(u"x"); });
  m_injector->inject(u"abc"_s, 1, {}, {}, typed);
  finish();
  EXPECT_EQ(m_journal.entries().filter(u"complete"_s).size(), 1);
}

TEST_F(TextInjectorTest, StopsBeforeItsFirstKeyIfTheInjectorIsGone) {
  m_injector->inject(u"a"_s, 1, browser, {});
  m_injector.reset();
  finish();
  EXPECT_EQ(takeJournal(), "");
}

TEST_F(TextInjectorTest, AnInjectionInFlightKeepsTheInjectorAliveUntilTheMainThreadHasIt) {
  const std::weak_ptr<TextInjector> watched = m_injector;
  m_sleeper.setOnSleep([this] { m_injector.reset(); });
  m_injector->inject(u"a"_s, 0, {}, {});
  m_workers.drain();
  EXPECT_FALSE(watched.expired());
  m_scheduler.runPending();
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(takeJournal(), "begin 'a'; sleep 10000; text 'a'; sleep 1000; end; complete");
}

TEST_F(TextInjectorTest, CutShortItEndsAfterTheActionAtHand) {
  m_sleeper.setOnSleep([this] { m_injector->cutShort(); });
  m_injector->inject(u"abc"_s, 3, {}, 1);
  finish();
  EXPECT_EQ(takeJournal(), "begin 'abc'; key 51; sleep 2000; end; complete");
}

TEST_F(TextInjectorTest, TypesALongTextToItsEnd) {
  const QString line(25'003, u'a');
  m_injector->inject(line + u'\n' + line, 0, {}, {});
  finish();
  QStringList entries = m_journal.takeEntries();
  entries.removeAll(u"sleep 1000"_s);
  EXPECT_EQ(entries.count(u"text 'aaaaaaaaaaaaaaaaaaaa'"_s), 2 * 1250);
  EXPECT_EQ(entries.count(u"text 'aaa'"_s), 2);
  EXPECT_EQ(entries.indexOf(u"key 36"_s), entries.indexOf(u"text 'aaa'"_s) + 1);
  EXPECT_EQ(entries.indexOf(u"text 'aaa'"_s), 2 + 1250);
}

TEST_F(TextInjectorTest, CutShortBeforeItBeganItSendsNothing) {
  m_injector->inject(u"abc"_s, 3, browser, 1);
  m_injector->cutShort();
  finish();
  EXPECT_EQ(takeJournal(), "complete");
}

}  // namespace
}  // namespace zarvy
