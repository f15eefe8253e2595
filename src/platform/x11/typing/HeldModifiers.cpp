#include "platform/x11/typing/HeldModifiers.h"

#include <chrono>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/typing/KeySender.h"

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;
constexpr auto longestWaitForRelease = 500ms;

void latchAndLock(Connection& connection, uint32_t affectLocks, uint32_t locks,
                  uint32_t affectLatches) {
  xcb_xkb_latch_lock_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                           static_cast<uint8_t>(affectLocks), static_cast<uint8_t>(locks), 0, 0,
                           static_cast<uint8_t>(affectLatches), 0, 0);
}

}  // namespace

HeldModifiers::HeldModifiers(Connection& connection, KeySender& sender, PersonsKeys& persons)
    : m_connection(connection), m_sender(sender), m_persons(persons) {}

void HeldModifiers::awaitShortcutModifiersReleased(const ModifierKeys& keys) {
  const uint32_t shortcut = (keys.control | keys.option | keys.command) & ~keys.levelThree;
  const auto deadline = std::chrono::steady_clock::now() + longestWaitForRelease;
  std::unique_lock lock(m_mutex);
  while (!m_abandoned && (KeyboardState::query(m_connection).heldModifiers & shortcut) != 0) {
    if (m_stateChanged.wait_until(lock, deadline) == std::cv_status::timeout) return;
  }
}

void HeldModifiers::beginRun(const RunKeyboard& keyboard) {
  m_released.reset();
  for (std::size_t keycode = 0; keycode < keyboard.held.size(); ++keycode) {
    if (keyboard.held[keycode]) release(keyboard.number, static_cast<uint8_t>(keycode));
  }
  // What was pressed again on another keyboard than it is held on stays down there until the
  // user's release has been heard, and a key that is down there cannot be pressed there.
  for (const auto& [keycode, pressedOn] : std::exchange(m_pressedAgain, {})) {
    release(pressedOn, keycode);
  }
  if (keyboard.latched != 0 || keyboard.locked != 0) {
    latchAndLock(m_connection, keyboard.locked, 0, keyboard.latched);
  }
}

void HeldModifiers::holdOffShift(const RunKeyboard& keyboard) {
  for (const uint8_t keycode : keyboard.keys.shiftKeys) release(keyboard.number, keycode);
}

void HeldModifiers::holdOffOthers(const RunKeyboard& keyboard) {
  for (const uint8_t keycode : keyboard.keys.otherModifierKeys) release(keyboard.number, keycode);
}

// What the server said was down, and what has been heard to be: either may be ahead of the other.
// A release that has not been heard yet will be put right by keyReleased(). A key that means
// something else on the keyboard that is typed on cannot be pressed again there.
void HeldModifiers::endRun(const RunKeyboard& keyboard) {
  const std::array<uint32_t, 256> releases = m_persons.releases();
  const KeycodeSet heard = m_persons.held();
  const KeycodeSet released = m_released & keyboard.keys.momentary;
  for (std::size_t keycode = 0; keycode < released.size(); ++keycode) {
    if (!released[keycode]) continue;
    const bool wasDown = keyboard.held[keycode] && keyboard.releases[keycode] == releases[keycode];
    if (wasDown || heard[keycode]) pressAgain(keyboard.number, static_cast<uint8_t>(keycode));
  }
  if (keyboard.locked != 0) latchAndLock(m_connection, keyboard.locked, keyboard.locked, 0);
}

void HeldModifiers::release(uint16_t keyboard, uint8_t keycode) {
  m_lastRelease[keycode] = m_sender.release(keyboard, keycode);
  m_released.set(keycode);
}

void HeldModifiers::pressAgain(uint16_t keyboard, uint8_t keycode) {
  m_sender.press(keyboard, keycode);
  m_lastRelease[keycode].reset();
  m_pressedAgain[keycode] = keyboard;
}

// A run that was on its way to the server when the key went down has released it unknowingly.
void HeldModifiers::keyPressed(uint16_t keyboard, uint8_t keycode, uint32_t sequence) {
  const std::lock_guard lock(m_mutex);
  const auto& lastRelease = m_lastRelease[keycode];
  if (!lastRelease || !isBefore(sequence, *lastRelease)) return;
  pressAgain(keyboard, keycode);
  m_sender.flush();
}

// The press of endRun() may have come after the user's release, or sit on another keyboard: only a
// faked release ends it then.
void HeldModifiers::keyReleased(uint8_t keycode) {
  const std::lock_guard lock(m_mutex);
  const auto pressed = m_pressedAgain.find(keycode);
  if (pressed == m_pressedAgain.end()) return;
  release(pressed->second, keycode);
  m_pressedAgain.erase(pressed);
  m_sender.flush();
}

void HeldModifiers::letGo() {
  const std::lock_guard lock(m_mutex);
  for (const auto& [keycode, keyboard] : std::exchange(m_pressedAgain, {})) {
    m_sender.release(keyboard, keycode);
  }
  m_sender.flush();
}

void HeldModifiers::stateChanged() {
  const std::lock_guard lock(m_mutex);
  m_stateChanged.notify_all();
}

void HeldModifiers::abandonWaits() {
  const std::lock_guard lock(m_mutex);
  m_abandoned = true;
  m_stateChanged.notify_all();
}

}  // namespace zarvy::x11
