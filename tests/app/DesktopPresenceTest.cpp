#include <gtest/gtest.h>

#include "app/AppStateFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

class DesktopPresenceTest : public AppStateFixture {
 protected:
  void SetUp() override { startWith(u";ty"_s, u"x"_s); }

  void change(bool Settings::*field, bool value) {
    Settings settings = state().library().settings();
    settings.*field = value;
    state().changeSettings(settings);
  }

  void setWindows(const QList<OpenWindows::Window>& windows) {
    m_harness.presence.openWindows = windows;
  }

  [[nodiscard]] std::string afterClosing() {
    state().presence().restoreAccessoryPolicyIfNoWindows();
    m_harness.scheduler.advance(milliseconds{100});
    return m_harness.takeJournal();
  }
};

TEST_F(DesktopPresenceTest, FollowsTheSettingAtOnceAndBothWays) {
  setWindows({{u"Statistics"_s, true}});
  change(&Settings::hideDockIcon, true);
  EXPECT_EQ(m_harness.takeJournal(), "accessory");
  change(&Settings::hideDockIcon, true);
  EXPECT_EQ(m_harness.takeJournal(), "");
  change(&Settings::hideDockIcon, false);
  EXPECT_EQ(m_harness.takeJournal(), "regular");
}

TEST_F(DesktopPresenceTest, IsRegularWhileAWindowIsOpen) {
  state().presence().becomeRegularIfHidden();
  EXPECT_EQ(m_harness.takeJournal(), "") << "it is all the time";
  change(&Settings::hideDockIcon, true);
  (void)m_harness.takeJournal();
  state().presence().becomeRegularIfHidden();
  EXPECT_EQ(m_harness.takeJournal(), "regular");
}

TEST_F(DesktopPresenceTest, LeavesTheTaskbarAMomentAfterTheLastWindow) {
  change(&Settings::hideDockIcon, true);
  (void)m_harness.takeJournal();
  setWindows({{u"Statistics"_s, false}, {u"Manage Snippets"_s, true}});
  EXPECT_EQ(afterClosing(), "");
  setWindows({{u"Statistics"_s, false}, {u"Manage Snippets"_s, false}});
  state().presence().restoreAccessoryPolicyIfNoWindows();
  m_harness.scheduler.advance(milliseconds{99});
  EXPECT_EQ(m_harness.takeJournal(), "");
  m_harness.scheduler.advance(milliseconds{1});
  EXPECT_EQ(m_harness.takeJournal(), "accessory");
}

TEST_F(DesktopPresenceTest, CountsOnlyRealWindows) {
  change(&Settings::hideDockIcon, true);
  (void)m_harness.takeJournal();
  setWindows({{u""_s, true}, {u"Item-0"_s, true}, {u"Setup"_s, false}});
  EXPECT_EQ(afterClosing(), "accessory");
  setWindows({{u"Item-0"_s, true}, {u"Setup"_s, true}});
  EXPECT_EQ(afterClosing(), "");
}

TEST_F(DesktopPresenceTest, LooksOnceForEachWindowThatCloses) {
  change(&Settings::hideDockIcon, true);
  (void)m_harness.takeJournal();
  state().presence().restoreAccessoryPolicyIfNoWindows();
  state().presence().restoreAccessoryPolicyIfNoWindows();
  m_harness.scheduler.advance(milliseconds{100});
  EXPECT_EQ(m_harness.takeJournal(), "accessory; accessory");
}

TEST_F(DesktopPresenceTest, ChangesNothingWhereTheProgramStaysInTheTaskbar) {
  EXPECT_EQ(afterClosing(), "");
}

TEST_F(DesktopPresenceTest, RegistersForTheLoginAndTellsWhatGoesWrong) {
  change(&Settings::launchAtLogin, true);
  EXPECT_EQ(m_harness.takeJournal(), "login item on");
  change(&Settings::launchAtLogin, false);
  EXPECT_EQ(m_harness.takeJournal(), "login item off");
  m_harness.presence.loginItemError = u"No space"_s;
  change(&Settings::launchAtLogin, true);
  EXPECT_EQ(m_harness.takeJournal(),
            "login item on; print Failed to enable launch at login: No space");
  EXPECT_TRUE(state().library().settings().launchAtLogin) << "it is not put back";
  change(&Settings::launchAtLogin, false);
  EXPECT_EQ(m_harness.takeJournal(),
            "login item off; print Failed to disable launch at login: No space");
}

TEST_F(DesktopPresenceTest, SavesEveryChangeOfTheSettingsInTurn) {
  change(&Settings::soundEnabled, false);
  change(&Settings::hideDockIcon, true);
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 2U);
  ASSERT_TRUE(m_harness.documentQueue.runNext());
  EXPECT_FALSE(m_harness.store.loadSettings().soundEnabled);
  EXPECT_FALSE(m_harness.store.loadSettings().hideDockIcon);
  ASSERT_TRUE(m_harness.documentQueue.runNext());
  EXPECT_TRUE(m_harness.store.loadSettings().hideDockIcon);
}

}  // namespace
}  // namespace zarvy
