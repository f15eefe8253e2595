#include "platform/x11/keyboard/PersonsKeys.h"

#include <algorithm>

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;

// From one key to the next, of a user who types with a modifier held.
constexpr auto longestPause = 500ms;
constexpr auto longestUse = 3s;

// From an event to its being read, on a busy machine.
constexpr auto longestLag = 200ms;

}  // namespace

void PersonsKeys::press(uint16_t keyboard, uint8_t keycode) {
  const std::lock_guard lock(m_mutex);
  m_held[keyboard].set(keycode);
  m_lastKeyboard = keyboard;
  ++m_presses;
  m_lastPress = Clock::now();
  m_changed.notify_all();
}

void PersonsKeys::release(uint16_t keyboard, uint8_t keycode) {
  const std::lock_guard lock(m_mutex);
  m_held[keyboard].reset(keycode);
  ++m_releases[keycode];
  m_changed.notify_all();
}

void PersonsKeys::keepKeyboards(const std::vector<uint16_t>& keyboards) {
  const std::lock_guard lock(m_mutex);
  std::erase_if(m_held, [&](const auto& held) {
    return std::find(keyboards.begin(), keyboards.end(), held.first) == keyboards.end();
  });
  if (std::find(keyboards.begin(), keyboards.end(), m_lastKeyboard) == keyboards.end()) {
    m_lastKeyboard = m_firstKeyboard;
  }
  m_changed.notify_all();
}

uint16_t PersonsKeys::lastKeyboard() const {
  const std::lock_guard lock(m_mutex);
  return m_lastKeyboard;
}

KeycodeSet PersonsKeys::held() const {
  const std::lock_guard lock(m_mutex);
  return heldUnderLock();
}

KeycodeSet PersonsKeys::heldUnderLock() const {
  KeycodeSet held;
  for (const auto& [keyboard, keys] : m_held) held |= keys;
  return held;
}

uint64_t PersonsKeys::presses() const {
  const std::lock_guard lock(m_mutex);
  return m_presses;
}

std::array<uint32_t, 256> PersonsKeys::releases() const {
  const std::lock_guard lock(m_mutex);
  return m_releases;
}

bool PersonsKeys::areInUse(const KeycodeSet& modifiers, uint64_t presses) const {
  const std::lock_guard lock(m_mutex);
  return areInUseUnderLock(modifiers, presses);
}

bool PersonsKeys::areInUseUnderLock(const KeycodeSet& modifiers, uint64_t presses) const {
  return !m_isAbandoned && m_presses != presses && (heldUnderLock() & modifiers).any() &&
         Clock::now() < m_lastPress + longestPause;
}

bool PersonsKeys::awaitUnused(const KeycodeSet& modifiers, uint64_t presses) {
  std::unique_lock lock(m_mutex);
  const auto deadline = Clock::now() + longestUse;
  while (areInUseUnderLock(modifiers, presses)) {
    if (Clock::now() >= deadline) return false;
    m_changed.wait_until(lock, std::min(deadline, m_lastPress + longestPause));
  }
  return true;
}

bool PersonsKeys::awaitHeard(const KeycodeSet& keys) {
  std::unique_lock lock(m_mutex);
  const auto areHeard = [&] { return (keys & ~heldUnderLock()).none(); };
  m_changed.wait_for(lock, longestLag, [&] { return m_isAbandoned || areHeard(); });
  return areHeard();
}

void PersonsKeys::abandonWaits() {
  const std::lock_guard lock(m_mutex);
  m_isAbandoned = true;
  m_changed.notify_all();
}

}  // namespace zarvy::x11
