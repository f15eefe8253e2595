#include <string>

#include <gtest/gtest.h>

#include "app/AppStateFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr std::chrono::milliseconds delay{300};

constexpr HotKey altSpace{49, 0x80000};
constexpr HotKey controlAltSpace{49, 0xC0000};
constexpr HotKey superSpace{49, 0x100000};
constexpr HotKey controlShiftSpace{49, 0x60000};

class QuickSearchExpansion : public AppStateFixture {
 protected:
  void pressHotKey() {
    m_harness.source.press(49, 0x80000);
    m_harness.scheduler.runPending();
  }

  [[nodiscard]] FakeQuickSearchWindow& panel() { return m_harness.quickSearchWindow; }

  [[nodiscard]] std::string typed() {
    m_harness.workers.drain();
    return m_harness.takeJournal();
  }

  const RunningApplication m_own{30, u"zarvy"_s, u"Zarvy"_s, 3};
};

TEST_F(QuickSearchExpansion, OpensAndClosesWithTheHotKey) {
  startWith(u";ty"_s, u"x"_s);
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "panel of 1 snippets, 0 folders");
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "panel hides");
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "panel of 1 snippets, 0 folders");
}

// The program that has the key does something of its own when it is pressed.
TEST_F(QuickSearchExpansion, DoesNotOpenWithAKeyThatIsAnotherPrograms) {
  startWith(u";ty"_s, u"x"_s);
  EXPECT_EQ(state().expansion().takenHotKey(), std::nullopt);
  m_harness.hotKeys.taken = {altSpace};
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "");
  EXPECT_EQ(state().expansion().takenHotKey(),
            (TakenHotKey{altSpace, {controlAltSpace, superSpace, controlShiftSpace}}));
  m_harness.hotKeys.taken = {};
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "panel of 1 snippets, 0 folders");
  EXPECT_EQ(state().expansion().takenHotKey(), std::nullopt);
}

TEST_F(QuickSearchExpansion, ClosesWithAKeyThatAnotherProgramHasTakenMeanwhile) {
  startWith(u";ty"_s, u"x"_s);
  pressHotKey();
  (void)m_harness.takeJournal();
  m_harness.hotKeys.taken = {altSpace};
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "panel hides");
}

TEST_F(QuickSearchExpansion, OffersTheKeysThatAreFreeFromTheStart) {
  m_harness.hotKeys.taken = {altSpace, superSpace};
  int changes = 0;
  QObject::connect(&state().expansion(), &ExpansionService::takenHotKeyChanged,
                   [&changes] { ++changes; });
  startWith(u";ty"_s, u"x"_s);
  EXPECT_EQ(state().expansion().takenHotKey(),
            (TakenHotKey{altSpace, {controlAltSpace, controlShiftSpace}}));
  pressHotKey();
  EXPECT_EQ(changes, 1);
}

TEST_F(QuickSearchExpansion, OpensWithTheNewKeyAtOnce) {
  m_harness.hotKeys.taken = {altSpace};
  startWith(u";ty"_s, u"x"_s);
  state().changeHotKey(controlAltSpace);
  EXPECT_EQ(state().expansion().takenHotKey(), std::nullopt);
  (void)m_harness.takeJournal();
  m_harness.source.press(49, 0xC0000);
  m_harness.scheduler.runPending();
  EXPECT_EQ(m_harness.takeJournal(), "panel of 1 snippets, 0 folders");
  m_harness.documentQueue.drain();
  EXPECT_EQ(m_harness.store.loadSettings().quickSearchKeyCode, 49);
  EXPECT_EQ(m_harness.store.loadSettings().quickSearchModifiers, 0xC0000U);
}

// The panel has the keyboard then, and other applications get no key.
TEST_F(QuickSearchExpansion, ClosesWithTheHotKeyPressedInThePanelItself) {
  startWith(u";ty"_s, u"x"_s);
  pressHotKey();
  (void)m_harness.takeJournal();
  const auto pressHere = [this](quint16 keyCode) {
    m_harness.source.pressHere(keyCode, 0x80000);
    m_harness.scheduler.runPending();
  };
  pressHere(48);
  EXPECT_EQ(m_harness.takeJournal(), "");
  pressHere(49);
  EXPECT_EQ(m_harness.takeJournal(), "panel hides");
  pressHere(49);
  EXPECT_EQ(m_harness.takeJournal(), "") << "in another window of the program it does nothing";
  state().expansion().togglePause();
  EXPECT_EQ(m_harness.source.localHandlerCount(), 0U);
}

TEST_F(QuickSearchExpansion, TypesThePickIntoTheApplicationThatWasInFrontAndDeletesNothing) {
  startWith(u";ty"_s, u"Thanks"_s);
  m_harness.type(u";ty"_s);
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 3);
  m_harness.finish();
  (void)m_harness.takeJournal();
  pressHotKey();
  m_harness.workspace.setFrontmost(m_own);
  panel().select(state().library().snippets().front());
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 0);
  EXPECT_EQ(m_harness.takeJournal(), "panel of 1 snippets, 0 folders; panel hides; activate ");
  m_harness.scheduler.advance(delay - std::chrono::milliseconds{1});
  EXPECT_EQ(typed(), "");
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 1);
  m_harness.scheduler.advance(std::chrono::milliseconds{1});
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 2);
  EXPECT_EQ(typed(), "begin 'Thanks'; sleep 10000; text 'Thanks'; sleep 1000; end");
}

TEST_F(QuickSearchExpansion, AsksForFieldsAndTypesThemIntoTheSameApplication) {
  startWith(u";d"_s, u"Dear {{field:Name}}"_s);
  m_harness.type(u"x;d"_s);
  m_harness.fillInWindow.pressCancel();
  pressHotKey();
  const auto target = m_harness.workspace.frontmostApplication();
  m_harness.workspace.setFrontmost(m_own);
  (void)m_harness.takeJournal();
  panel().select(state().library().snippets().front());
  m_harness.workspace.setFrontmost(m_own);  // the window manager takes its time
  m_harness.scheduler.runPending();
  EXPECT_EQ(m_harness.takeJournal(), "panel hides; activate ; form ;d gray");
  ASSERT_TRUE(state().coordinator().pendingExpansion().has_value());
  EXPECT_EQ(state().coordinator().pendingExpansion()->matchLength, 0);
  EXPECT_EQ(state().coordinator().pendingExpansion()->targetApp, target);
  m_harness.fillInWindow.pressExpand({{u"Name"_s, u"Ada"_s}});
  m_harness.scheduler.advance(std::chrono::milliseconds{100});
  EXPECT_EQ(typed(),
            "form closes; activate ; sleep 50000; begin 'Dear Ada'; sleep 10000; text 'Dear Ada'; "
            "sleep 1000; end");
}

TEST_F(QuickSearchExpansion, DoesNotDecideWhereALaterTriggerIsExpanded) {
  const Snippet plain = m_harness.snippet(u";ty"_s, u"Thanks"_s);
  const Snippet letter = m_harness.snippet(u";d"_s, u"Dear {{field:Name}}"_s);
  m_harness.load({{plain, letter}, {}, {}, {}});
  m_harness.finish();
  pressHotKey();
  panel().select(plain);
  m_harness.scheduler.advance(std::chrono::milliseconds{500});
  m_harness.finish();
  const RunningApplication other{40, u"terminal"_s, {}, 7};
  m_harness.workspace.setFrontmost(other);
  m_harness.type(u";d"_s);
  ASSERT_TRUE(state().coordinator().pendingExpansion().has_value());
  EXPECT_EQ(state().coordinator().pendingExpansion()->targetApp, other);
}

// The user has turned to another application meanwhile, and calls quick search there.
TEST_F(QuickSearchExpansion, LeavesAnOpenFormAloneUnlessThePickHasFieldsToo) {
  const Snippet plain = m_harness.snippet(u";ty"_s, u"Thanks"_s);
  const Snippet letter = m_harness.snippet(u";d"_s, u"Dear {{field:Name}}"_s);
  m_harness.load({{plain, letter}, {}, {}, {}});
  m_harness.type(u";d"_s);
  m_harness.finish();
  (void)m_harness.takeJournal();
  pressHotKey();
  panel().select(plain);
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(),
            "panel of 2 snippets, 0 folders; panel hides; activate ; begin 'Thanks'; sleep 10000; "
            "text 'Thanks'; sleep 1000; end");
  EXPECT_TRUE(m_harness.fillInWindow.isOpen());
  m_harness.finish();
  (void)m_harness.takeJournal();
  pressHotKey();
  panel().select(letter);
  m_harness.scheduler.runPending();
  EXPECT_EQ(m_harness.takeJournal(),
            "panel of 2 snippets, 0 folders; panel hides; activate ; form closes; form ;d gray");
  EXPECT_EQ(state().coordinator().pendingExpansion()->matchLength, 0);
}

TEST_F(QuickSearchExpansion, NeedsNoApplicationInFront) {
  startWith(u";ty"_s, u"Thanks"_s);
  m_harness.workspace.setFrontmost(std::nullopt);
  pressHotKey();
  panel().select(state().library().snippets().front());
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "panel of 1 snippets, 0 folders; panel hides");
  EXPECT_EQ(m_harness.stats.summary().totalExpansions, 1) << "counted all the same";
}

TEST_F(QuickSearchExpansion, IsNotHeardDuringAPause) {
  startWith(u";ty"_s, u"Thanks"_s);
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  pressHotKey();
  EXPECT_EQ(m_harness.takeJournal(), "");
}

TEST_F(QuickSearchExpansion, DoesNothingOnceTheStateIsGone) {
  startWith(u";ty"_s, u"Thanks"_s);
  pressHotKey();
  const Snippet pick = state().library().snippets().front();
  m_harness.state.reset();
  (void)m_harness.takeJournal();
  panel().select(pick);
  m_harness.scheduler.advance(delay);
  EXPECT_EQ(typed(), "panel hides");
}

}  // namespace
}  // namespace zarvy
