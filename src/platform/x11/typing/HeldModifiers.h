#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"

namespace zarvy::x11 {

class Connection;
class KeySender;

// Takes the modifiers that the user holds out of the way of a typing run, and gives them back where
// they are still held afterwards. No modifier is ever left down that nobody holds.
//
// Callers serialise the typing side by the lock of the typist; the reader's thread comes in through
// its own two operations.
class HeldModifiers {
 public:
  HeldModifiers(Connection& connection, KeySender& sender);

  // Waits, for a bounded time, until Control, Alt and Super are up: they would turn text into
  // shortcuts, and releasing them for the user can itself be a command to a desktop.
  void awaitShortcutModifiersReleased(const ModifierKeys& keys);

  // Releases the modifier keys in `held`, which applications see as down, what restore() pressed,
  // and the latches and locks given (real modifiers). `keys` are those of the keyboard for faked
  // keys. All is buffered ahead of what is posted next.
  void clear(const ModifierKeys& keys, const KeycodeSet& held, uint32_t latched, uint32_t locked);

  // A key for Shift, or LevelThree, that the user's own release of a held one cannot cut short.
  // Absent where there is no candidate.
  [[nodiscard]] std::optional<uint8_t> freeKey(const std::vector<uint8_t>& candidates) const;

  // Presses again what clear() released and a keyboard still reports as held, and locks again what
  // it unlocked.
  void restore();

  // Takes back what restore() has pressed. At the end of the program.
  void letGo();

  // Releases what a crashed run of this program left down.
  void releaseLeftovers(const ModifierKeys& keys);

  // On the reader's thread.
  void stateChanged();
  void keyReleased(uint8_t keycode);

  // Ends every wait. Any thread.
  void abandonWaits();

 private:
  Connection& m_connection;
  KeySender& m_sender;
  HeldKeys m_heldKeys;
  mutable std::mutex m_mutex;
  std::condition_variable m_stateChanged;
  bool m_abandoned = false;
  KeycodeSet m_released;    // by clear(), since the last restore()
  uint32_t m_unlocked = 0;  // likewise
  KeycodeSet m_repressed;   // by restore(), and still to be released along with the user's key
};

}  // namespace zarvy::x11
