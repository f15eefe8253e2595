#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

#include "platform/x11/keyboard/KeycodeSet.h"

namespace zarvy::x11 {

// The keys that others than this program hold down, and the keyboard that they used last. Followed
// by the events of keys: the server's own record will not do, since this program types on the very
// keyboards that people type on, and releases there what they hold. Any thread.
class PersonsKeys {
 public:
  // `keyboard` is the one to type on until the user has used one; an XInput number, as all here.
  explicit PersonsKeys(uint16_t keyboard) : m_firstKeyboard(keyboard), m_lastKeyboard(keyboard) {}

  void press(uint16_t keyboard, uint8_t keycode);
  void release(uint16_t keyboard, uint8_t keycode);

  // Those are the keyboards there are now: what was held on others is not held any more, and the
  // user no longer types on them.
  void keepKeyboards(const std::vector<uint16_t>& keyboards);

  // The keyboard that the user pressed a key of last.
  [[nodiscard]] uint16_t lastKeyboard() const;

  // What is down, on all keyboards.
  [[nodiscard]] KeycodeSet held() const;

  // How many presses there have been so far, and how many releases of one key.
  [[nodiscard]] uint64_t presses() const;
  [[nodiscard]] std::array<uint32_t, 256> releases() const;

  // Whether one of `modifiers` is held and has been pressed, or any key together with it, since
  // there were `presses` presses: the user types with it. Not one that has been held for long with
  // nothing typed meanwhile.
  [[nodiscard]] bool areInUse(const KeycodeSet& modifiers, uint64_t presses) const;

  // Waits while they are in use. False where one is in use for too long to wait any more.
  [[nodiscard]] bool awaitUnused(const KeycodeSet& modifiers, uint64_t presses);

  // Waits, not for long, until all of `keys`, which the server says are down, have been heard to
  // be. False where one was not.
  [[nodiscard]] bool awaitHeard(const KeycodeSet& keys);

  // Ends every wait, now and from now on.
  void abandonWaits();

 private:
  using Clock = std::chrono::steady_clock;
  [[nodiscard]] KeycodeSet heldUnderLock() const;
  [[nodiscard]] bool areInUseUnderLock(const KeycodeSet& modifiers, uint64_t presses) const;

  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  const uint16_t m_firstKeyboard;
  std::map<uint16_t, KeycodeSet> m_held;  // by keyboard
  uint16_t m_lastKeyboard;
  uint64_t m_presses = 0;
  std::array<uint32_t, 256> m_releases{};  // by key
  Clock::time_point m_lastPress;
  bool m_isAbandoned = false;
};

}  // namespace zarvy::x11
