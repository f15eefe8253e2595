// The modifiers that a person holds around typing, on a real X server, without a listener to the
// keyboard's events: each test says what is heard, and when.

#include <memory>
#include <optional>

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "e2e/harness/InputDevices.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/Xkb.h"
#include "platform/x11/capture/OwnPosts.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"
#include "platform/x11/keyboard/PersonsKeys.h"
#include "platform/x11/typing/HeldModifiers.h"
#include "platform/x11/typing/KeySender.h"
#include "platform/x11/typing/TypingRun.h"

namespace zarvy::x11 {
namespace {

using Keys = std::set<std::uint8_t>;

class HeldModifiersOnServer : public testing::Test {
 protected:
  HeldModifiersOnServer()
      : m_server(m_folder.path().toStdString()),
        m_theirs(m_server.display()),
        m_person(m_theirs),
        m_personsKeyboard(e2e::serverKeyboardId(m_theirs)),
        m_ours(connect(m_server.display())),
        m_sender(*m_ours, m_posts),
        m_persons(m_personsKeyboard),
        m_modifiers(*m_ours, m_sender, m_persons),
        m_keymap(KeymapSnapshot::read(*m_ours, static_cast<uint16_t>(m_ours->coreKeyboard()))) {}

  // What a run finds now.
  [[nodiscard]] HeldModifiers::RunKeyboard found() const {
    const KeyboardSnapshot seen = KeyboardSnapshot::take(*m_ours);
    const ModifierKeys& keys = m_keymap->modifiers();
    return {.number = m_typedOn.value_or(m_personsKeyboard),
            .keys = keys,
            .held = seen.down & keys.momentary,
            .latched = seen.state.latchedModifiers,
            .locked = seen.state.lockedModifiers};
  }

  [[nodiscard]] std::optional<uint16_t> fakeKeyboard() const {
    return HeldKeys(*m_ours).ownFakeKeyboard();
  }

  void type() { typeOn(found()); }

  void typeOn(const HeldModifiers::RunKeyboard& keyboard) {
    TypingRun(*m_ours, m_sender, m_modifiers, keyboard).type({.keycode = keyOfNoMeaning});
    m_ours->synchronize();
  }

  void pressShift() {
    m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
    ASSERT_TRUE(isShifted());
    m_persons.press(m_personsKeyboard, m_shift);
  }

  // Before the adapters hear of it.
  void letGoOfShift() { m_person.release(XKB_KEY_Shift_L, e2e::Body::serverKeyboard); }

  void hearTheRelease() {
    m_theirs.synchronise();
    m_persons.release(m_personsKeyboard, m_shift);
    m_modifiers.keyReleased(m_shift);
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
    return KeyboardSnapshot::take(*m_ours).state.lockedModifiers;
  }

  [[nodiscard]] bool isShifted() const {
    m_theirs.synchronise();
    return (KeyboardSnapshot::take(*m_ours).state.heldModifiers & XCB_MOD_MASK_SHIFT) != 0;
  }

  [[nodiscard]] Keys held() const {
    m_theirs.synchronise();
    return e2e::heldKeys(m_theirs);
  }

  static constexpr uint8_t m_shift = 50;  // the left one, on all layouts here
  static constexpr uint8_t keyOfNoMeaning = 97;

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::XConnection m_theirs;
  e2e::Person m_person;
  const uint16_t m_personsKeyboard;
  std::optional<uint16_t> m_typedOn;  // another keyboard than the person's
  std::unique_ptr<Connection> m_ours;
  OwnPosts m_posts;
  KeySender m_sender;
  PersonsKeys m_persons;
  HeldModifiers m_modifiers;
  std::shared_ptr<const KeymapSnapshot> m_keymap;

 private:
  static std::unique_ptr<Connection> connect(const std::string& display) {
    qputenv("DISPLAY", display.c_str());
    QString reason;
    return Connection::open(&reason);
  }
};

TEST_F(HeldModifiersOnServer, AreOutOfTheWayForARunAndComeBack) {
  pressShift();
  {
    const HeldModifiers::RunKeyboard keyboard = found();
    const auto lock = m_modifiers.lockForRun();
    m_modifiers.beginRun(keyboard);
    m_ours->synchronize();
    EXPECT_FALSE(isShifted());
    m_modifiers.endRun(keyboard);
    m_ours->synchronize();
  }
  EXPECT_TRUE(isShifted());
}

TEST_F(HeldModifiersOnServer, DoNotComeBackWhereTheyWereLetGoMeanwhile) {
  pressShift();
  const HeldModifiers::RunKeyboard keyboard = found();
  letGoOfShift();
  hearTheRelease();
  typeOn(keyboard);
  EXPECT_EQ(held(), Keys());
}

TEST_F(HeldModifiersOnServer, GoUpOnEveryKeyboardOnceTheReleaseIsHeard) {
  for (const auto typedOn : {std::optional<uint16_t>(), fakeKeyboard()}) {
    m_typedOn = typedOn;
    pressShift();
    type();
    EXPECT_TRUE(isShifted());
    letGoOfShift();
    hearTheRelease();
    EXPECT_EQ(held(), Keys());
  }
}

// The press that gives Shift back comes after the release that it does not know of.
TEST_F(HeldModifiersOnServer, GoUpOnEveryKeyboardWhereTheReleaseIsHeardLate) {
  for (const auto typedOn : {std::optional<uint16_t>(), fakeKeyboard()}) {
    m_typedOn = typedOn;
    pressShift();
    const HeldModifiers::RunKeyboard keyboard = found();
    letGoOfShift();
    typeOn(keyboard);
    hearTheRelease();
    EXPECT_EQ(held(), Keys());
  }
}

// A Shift that is down on another keyboard alone is up for the applications, and pressing it there
// once more does nothing.
TEST_F(HeldModifiersOnServer, GoUpOnEveryKeyboardBeforeTypingWhereTheReleaseIsHeardLate) {
  m_typedOn = fakeKeyboard();
  pressShift();
  type();
  letGoOfShift();
  EXPECT_FALSE(isShifted());
  m_persons.release(m_personsKeyboard, m_shift);
  type();
  EXPECT_EQ(held(), Keys());
}

TEST_F(HeldModifiersOnServer, ComeBackWhereARunHasReleasedThemBeforeTheyWereHeard) {
  const HeldModifiers::RunKeyboard keyboard = found();
  const uint32_t before = m_sender.release(m_personsKeyboard, keyOfNoMeaning);
  m_person.press(XKB_KEY_Shift_L, e2e::Body::serverKeyboard);
  ASSERT_TRUE(isShifted());
  typeOn(keyboard);
  EXPECT_FALSE(isShifted());
  m_persons.press(m_personsKeyboard, m_shift);
  m_modifiers.keyPressed(m_personsKeyboard, m_shift, before);
  m_ours->synchronize();
  EXPECT_TRUE(isShifted());
  letGoOfShift();
  hearTheRelease();
  EXPECT_EQ(held(), Keys());
}

TEST_F(HeldModifiersOnServer, AreLeftAloneWhereTheyWereHeldBeforeTheRunAndHeardAfterIt) {
  pressShift();
  type();
  EXPECT_TRUE(isShifted());
  const uint32_t after = m_sender.release(m_personsKeyboard, keyOfNoMeaning);
  m_modifiers.keyPressed(m_personsKeyboard, m_shift, after);
  letGoOfShift();
  EXPECT_EQ(held(), Keys());
}

// Whichever it is: of what is pressed in the middle of a run at most a few strokes see anything.
TEST_F(HeldModifiersOnServer, GoUpWithinALongRunThatDoesNotKnowOfThem) {
  const HeldModifiers::RunKeyboard keyboard = found();
  constexpr std::array<xkb_keysym_t, 4> symbols = {XKB_KEY_Shift_L, XKB_KEY_Control_L,
                                                   XKB_KEY_Alt_L, XKB_KEY_Super_L};
  for (const xkb_keysym_t symbol : symbols) {
    m_person.press(symbol, e2e::Body::serverKeyboard);
    m_theirs.synchronise();
    ASSERT_NE(KeyboardSnapshot::take(*m_ours).state.heldModifiers, 0U) << symbol;
    {
      TypingRun run(*m_ours, m_sender, m_modifiers, keyboard);
      for (int stroke = 0; stroke < 4; ++stroke) run.type({.keycode = keyOfNoMeaning});
    }
    m_ours->synchronize();
    EXPECT_EQ(KeyboardSnapshot::take(*m_ours).state.heldModifiers, 0U) << symbol;
    m_person.releaseAll();
  }
}

TEST_F(HeldModifiersOnServer, AreUnlockedForARunAndLockedAgain) {
  lockShift();
  const HeldModifiers::RunKeyboard keyboard = found();
  {
    const auto lock = m_modifiers.lockForRun();
    m_modifiers.beginRun(keyboard);
    EXPECT_EQ(locked(), 0U);
    m_modifiers.endRun(keyboard);
  }
  EXPECT_EQ(locked(), uint32_t{XCB_MOD_MASK_SHIFT});
}

TEST_F(HeldModifiersOnServer, AreTakenBackAtTheEndOfTheProgram) {
  m_typedOn = fakeKeyboard();
  pressShift();
  type();
  m_modifiers.letGo();
  m_ours->synchronize();
  m_person.releaseAll();
  EXPECT_EQ(held(), Keys());
}

}  // namespace
}  // namespace zarvy::x11
