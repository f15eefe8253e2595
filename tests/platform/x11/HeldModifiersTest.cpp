// The modifiers that somebody holds around typing, on a real X server, with nobody listening to the
// keyboard's events unless a test does.

#include <memory>

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "e2e/harness/InputDevices.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/Xkb.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/hearing/OwnPosts.h"
#include "platform/x11/keyboard/KeyboardLook.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"
#include "platform/x11/typing/HeldModifiers.h"
#include "platform/x11/typing/KeySender.h"

namespace zarvy::x11 {
namespace {

using Keys = std::set<std::uint8_t>;

class HeldModifiersOnServer : public testing::Test {
 protected:
  HeldModifiersOnServer()
      : m_server(m_folder.path().toStdString()),
        m_theirs(m_server.display()),
        m_person(m_theirs),
        m_ours(connect(m_server.display())),
        m_sender(*m_ours, m_posts),
        m_modifiers(*m_ours, m_sender),
        m_keymap(KeymapSnapshot::read(*m_ours, static_cast<uint16_t>(m_ours->coreKeyboard()))) {}

  [[nodiscard]] KeyboardLook look() const {
    return KeyboardLook::take(*m_ours, static_cast<uint16_t>(m_ours->coreKeyboard()));
  }

  // As the typing does at the start of each run.
  void clear() {
    const KeyboardLook seen = look();
    const ModifierKeys& keys = m_keymap->modifiers();
    const uint32_t locked = seen.state.lockedModifiers;
    m_modifiers.clear(keys, seen.down & keys.momentary, seen.state.latchedModifiers, locked);
    m_sender.flush();
    m_ours->synchronize();
  }

  void restore() {
    m_modifiers.restore();
    m_ours->synchronize();
  }

  // As a Shift Lock key does.
  void lockShift() const {
    xcb_xkb_latch_lock_state(m_theirs.get(), XCB_XKB_ID_USE_CORE_KBD, XCB_MOD_MASK_SHIFT,
                             XCB_MOD_MASK_SHIFT, 0, 0, 0, 0, 0);
    m_theirs.synchronise();
  }

  [[nodiscard]] uint32_t locked() const {
    m_theirs.synchronise();
    return look().state.lockedModifiers;
  }

  [[nodiscard]] bool isShifted() const {
    m_theirs.synchronise();
    return (look().state.heldModifiers & XCB_MOD_MASK_SHIFT) != 0;
  }

  [[nodiscard]] Keys held() const {
    m_theirs.synchronise();
    return e2e::heldKeys(m_theirs);
  }

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::XConnection m_theirs;
  e2e::Person m_person;
  std::unique_ptr<Connection> m_ours;
  OwnPosts m_posts;
  KeySender m_sender;
  HeldModifiers m_modifiers;
  std::shared_ptr<const KeymapSnapshot> m_keymap;

 private:
  static std::unique_ptr<Connection> connect(const std::string& display) {
    qputenv("DISPLAY", display.c_str());
    QString reason;
    return Connection::open(&reason);
  }
};

TEST_F(HeldModifiersOnServer, AreOutOfTheWayAndComeBack) {
  m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  ASSERT_TRUE(isShifted());
  clear();
  EXPECT_FALSE(isShifted());
  restore();
  EXPECT_TRUE(isShifted());
}

TEST_F(HeldModifiersOnServer, DoNotComeBackWhereTheyWereLetGoMeanwhile) {
  m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  ASSERT_TRUE(isShifted());
  clear();
  m_person.release(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  EXPECT_FALSE(isShifted());
  restore();
  EXPECT_EQ(held(), Keys());
}

TEST_F(HeldModifiersOnServer, GoUpOnEveryKeyboardOnceTheReleaseIsHeard) {
  m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  ASSERT_TRUE(isShifted());
  const Keys shift = held();
  ASSERT_EQ(shift.size(), 1U);
  clear();
  restore();
  m_person.release(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  m_theirs.synchronise();
  m_modifiers.keyReleased(*shift.begin());
  m_ours->synchronize();
  EXPECT_EQ(held(), Keys());
}

// A Shift that is down on the keyboard of faked keys alone is up for the applications, and pressing
// it there once more does nothing.
TEST_F(HeldModifiersOnServer, GoUpOnEveryKeyboardBeforeTypingWhereTheReleaseIsHeardLate) {
  m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  ASSERT_TRUE(isShifted());
  clear();
  restore();
  m_person.release(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  EXPECT_FALSE(isShifted());
  clear();
  EXPECT_EQ(held(), Keys());
}

TEST_F(HeldModifiersOnServer, AreUnlockedAndLockedAgain) {
  lockShift();
  clear();
  EXPECT_EQ(locked(), 0U);
  restore();
  EXPECT_EQ(locked(), uint32_t{XCB_MOD_MASK_SHIFT});
}

// Somebody who presses a lock's key while it is unlocked for the typing means to end the lock.
TEST_F(HeldModifiersOnServer, AreNotLockedAgainWhereTheUserHasEndedTheLockMeanwhile) {
  lockShift();
  clear();
  lockShift();
  clear();
  restore();
  EXPECT_EQ(locked(), 0U);
}

TEST_F(HeldModifiersOnServer, AreTakenBackAtTheEndOfTheProgram) {
  m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  ASSERT_TRUE(isShifted());
  clear();
  restore();
  m_modifiers.letGo();
  m_ours->synchronize();
  m_person.releaseAll();
  EXPECT_EQ(held(), Keys());
}

}  // namespace
}  // namespace zarvy::x11
