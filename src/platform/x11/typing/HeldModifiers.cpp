#include "platform/x11/typing/HeldModifiers.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/typing/KeySender.h"

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;
constexpr auto longestWaitForRelease = 500ms;

}  // namespace

HeldModifiers::HeldModifiers(Connection& connection, KeySender& sender)
    : m_connection(connection), m_sender(sender), m_heldKeys(connection) {}

void HeldModifiers::awaitShortcutModifiersReleased(const ModifierKeys& keys) {
  const uint32_t shortcut = (keys.control | keys.option | keys.command) & ~keys.levelThree;
  const auto deadline = std::chrono::steady_clock::now() + longestWaitForRelease;
  std::unique_lock lock(m_mutex);
  while (!m_abandoned && (KeyboardState::query(m_connection).heldModifiers & shortcut) != 0) {
    if (m_stateChanged.wait_until(lock, deadline) == std::cv_status::timeout) return;
  }
}

void HeldModifiers::clear(const ModifierKeys& keys, const KeycodeSet& held, uint32_t latched,
                          uint32_t locked) {
  const std::lock_guard lock(m_mutex);
  // What restore() pressed stays down on the keyboard of faked keys until the user's release has
  // been heard, and a key that is down there cannot be pressed there.
  const KeycodeSet toRelease = held | m_repressed;
  for (std::size_t keycode = 0; keycode < toRelease.size(); ++keycode) {
    if (toRelease[keycode]) m_sender.release(static_cast<uint8_t>(keycode));
  }
  // A key that means something else on the keyboard for faked keys cannot be pressed again there.
  m_released |= held & keys.momentary;
  m_repressed.reset();
  if (latched != 0 || locked != 0) {
    xcb_xkb_latch_lock_state(m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                             static_cast<uint8_t>(locked), 0, 0, 0, static_cast<uint8_t>(latched),
                             0, 0);
  }
  // A lock that is there once more is the user's press of its key, meant to end it.
  m_unlocked ^= locked;
}

std::optional<uint8_t> HeldModifiers::freeKey(const std::vector<uint8_t>& candidates) const {
  const std::lock_guard lock(m_mutex);
  const auto found = std::find_if(candidates.begin(), candidates.end(),
                                  [&](uint8_t keycode) { return !m_released[keycode]; });
  if (candidates.empty()) return std::nullopt;
  return found != candidates.end() ? *found : candidates.front();
}

void HeldModifiers::restore() {
  const std::lock_guard lock(m_mutex);
  if (m_unlocked != 0) {
    const auto locked = static_cast<uint8_t>(std::exchange(m_unlocked, 0U));
    xcb_xkb_latch_lock_state(m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, locked, locked, 0, 0, 0,
                             0, 0);
    m_connection.flush();
  }
  if (m_released.none()) return;
  const KeycodeSet held = m_released & m_heldKeys.onPhysicalKeyboards();
  for (std::size_t keycode = 0; keycode < held.size(); ++keycode) {
    if (held[keycode]) m_sender.press(static_cast<uint8_t>(keycode));
  }
  m_sender.flush();
  m_repressed |= held;
  m_released.reset();
}

void HeldModifiers::letGo() {
  const std::lock_guard lock(m_mutex);
  for (std::size_t keycode = 0; keycode < m_repressed.size(); ++keycode) {
    if (m_repressed[keycode]) m_sender.release(static_cast<uint8_t>(keycode));
  }
  m_repressed.reset();
  m_sender.flush();
}

void HeldModifiers::releaseLeftovers(const ModifierKeys& keys) {
  const KeycodeSet left = m_heldKeys.onFakeKeyboard() & keys.momentary;
  for (std::size_t keycode = 0; keycode < left.size(); ++keycode) {
    if (left[keycode]) m_sender.release(static_cast<uint8_t>(keycode));
  }
  m_sender.flush();
}

void HeldModifiers::stateChanged() {
  const std::lock_guard lock(m_mutex);
  m_stateChanged.notify_all();
}

// The faked press of restore() sits on another keyboard than the user's, and only a faked release
// ends it there.
void HeldModifiers::keyReleased(uint8_t keycode) {
  const std::lock_guard lock(m_mutex);
  if (!m_repressed[keycode]) return;
  m_repressed.reset(keycode);
  m_sender.release(keycode);
  m_sender.flush();
}

void HeldModifiers::abandonWaits() {
  const std::lock_guard lock(m_mutex);
  m_abandoned = true;
  m_stateChanged.notify_all();
}

}  // namespace zarvy::x11
