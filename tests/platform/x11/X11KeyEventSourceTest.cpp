// The way of a key press from the reader's thread to the listeners on the main thread.

#include <gtest/gtest.h>

#include "fakes/ManualScheduler.h"
#include "platform/SyntheticEvent.h"
#include "platform/x11/capture/X11KeyEventSource.h"

namespace zarvy::x11 {
namespace {

class KeyEventSourceTest : public testing::Test {
 protected:
  void press(quint16 keyCode, double locationX = 0) {
    KeyEvent event;
    event.keyCode = keyCode;
    event.locationX = locationX;
    m_source.deliver(event, m_ownWindowHasFocus);
  }

  void pressOwn(quint16 keyCode) { press(keyCode, syntheticEventMarkerX); }

  [[nodiscard]] KeyEventSource::Handler writeDown() {
    return [this](const KeyEvent& event) { m_heard.push_back(event.keyCode); };
  }

  [[nodiscard]] std::optional<KeyEventSource::Token> listen() {
    return m_source.addGlobalMonitor(writeDown(), [this] { m_heard.push_back(forgotten); });
  }

  using KeyCodes = std::vector<quint16>;
  static constexpr quint16 forgotten = 0xFFFF;

  ManualScheduler m_scheduler;
  bool m_ownWindowHasFocus = false;
  bool m_ownMenuIsOpen = false;
  KeyCodes m_heard;
  X11KeyEventSource m_source{m_scheduler, [this] { return m_ownMenuIsOpen; }};
};

TEST_F(KeyEventSourceTest, TellsOnTheMainThreadInTheOrderOfThePresses) {
  ASSERT_TRUE(listen());
  press(1);
  press(2);
  EXPECT_EQ(m_heard, KeyCodes());
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, (KeyCodes{1, 2}));
}

TEST_F(KeyEventSourceTest, BringsItsOwnKeysOverTogether) {
  ASSERT_TRUE(listen());
  pressOwn(1);
  pressOwn(2);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes());
  m_source.deliverOwnKeys();
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, (KeyCodes{1, 2}));
}

TEST_F(KeyEventSourceTest, KeepsItsOwnKeysInTheirPlaceAmongOthers) {
  ASSERT_TRUE(listen());
  pressOwn(1);
  press(2);
  pressOwn(3);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, (KeyCodes{1, 2, 3}));
}

TEST_F(KeyEventSourceTest, PassesOverWhatIsTypedIntoAWindowOfThisProgram) {
  ASSERT_TRUE(listen());
  m_ownWindowHasFocus = true;
  press(1);
  m_ownWindowHasFocus = false;
  press(2);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes{2});
}

TEST_F(KeyEventSourceTest, PassesOverWhatIsTypedIntoAMenuOfThisProgram) {
  ASSERT_TRUE(listen());
  press(1);
  m_ownMenuIsOpen = true;
  m_scheduler.runPending();
  m_ownMenuIsOpen = false;
  press(2);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes{2});
}

TEST_F(KeyEventSourceTest, HasOthersForgetWhateverHasTheKeyboard) {
  ASSERT_TRUE(listen());
  m_ownMenuIsOpen = true;
  m_source.deliverForgetting();
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes{forgotten});
}

TEST_F(KeyEventSourceTest, TellsLocalMonitorsOfThoseKeysAlone) {
  const auto local = m_source.addLocalMonitor(writeDown());
  ASSERT_TRUE(local);
  press(1);
  m_source.deliverForgetting();
  m_scheduler.runPending();
  m_ownWindowHasFocus = true;
  press(2);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes{2});
  m_source.removeMonitor(*local);
  press(3);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes{2});
}

TEST_F(KeyEventSourceTest, TellsEveryMonitorUntilItIsRemoved) {
  const auto first = listen();
  const auto second = listen();
  ASSERT_TRUE(first && second);
  press(1);
  m_scheduler.runPending();
  m_source.removeMonitor(*first);
  press(2);
  m_scheduler.runPending();
  m_source.removeMonitor(*second);
  press(3);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, (KeyCodes{1, 1, 2}));
}

TEST_F(KeyEventSourceTest, TellsNothingThatWasOnItsWayWhenTheMonitorWasRemoved) {
  const auto monitor = listen();
  ASSERT_TRUE(monitor);
  press(1);
  m_source.removeMonitor(*monitor);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes());
}

TEST_F(KeyEventSourceTest, BearsAMonitorThatRemovesItselfAndTheOthers) {
  std::vector<KeyEventSource::Token> tokens;
  const auto removeAll = [&](const KeyEvent& event) {
    m_heard.push_back(event.keyCode);
    for (const auto token : tokens) m_source.removeMonitor(token);
  };
  for (int monitor = 0; monitor < 2; ++monitor) {
    const auto token = m_source.addGlobalMonitor(removeAll, [] {});
    ASSERT_TRUE(token);
    tokens.push_back(*token);
  }
  press(1);
  press(2);
  m_scheduler.runPending();
  EXPECT_EQ(m_heard, KeyCodes{1});
}

}  // namespace
}  // namespace zarvy::x11
