#pragma once

#include <array>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/x11/keyboard/ModifierKeys.h"
#include "platform/x11/keyboard/PersonsKeys.h"

namespace zarvy::x11 {

class Connection;
class KeySender;

// Keeps the modifiers that the user holds from what is typed, and gives them back where they are
// still held. It never leaves a modifier down that the user does not hold.
//
// A run of typing holds the lock of this object while it posts; the reader's thread comes in
// between two runs. What a person does in the middle of a run is put right by the reader, which
// knows from the numbers of events whether the server carried out the run before or after that.
class HeldModifiers {
 public:
  HeldModifiers(Connection& connection, KeySender& sender, PersonsKeys& persons);

  // Waits, for a bounded time, until Control, Alt and Super are up: they would turn text into
  // shortcuts, and releasing them for the user can itself be a command to a desktop.
  void awaitShortcutModifiersReleased(const ModifierKeys& keys);

  // What a run types on, and what it finds there.
  struct RunKeyboard {
    uint16_t number = 0;  // XInput's
    const ModifierKeys& keys;
    KeycodeSet held;                       // modifier keys that applications saw as down
    std::array<uint32_t, 256> releases{};  // PersonsKeys', from just before that
    uint32_t latched = 0;                  // real modifiers, to be undone for good
    uint32_t locked = 0;                   // to be unlocked until the end of the run
  };

  // While this is held no other thread posts a key. The functions below are called under it, and
  // what they post is buffered.
  [[nodiscard]] std::unique_lock<std::mutex> lockForRun() { return std::unique_lock(m_mutex); }

  // Makes all modifiers ineffective.
  void beginRun(const RunKeyboard& keyboard);

  // Releases Shift once more, ahead of a key that must be without it: the user may have pressed it
  // since the run began. The same for Control, Alt, AltGr and Super.
  void holdOffShift(const RunKeyboard& keyboard);
  void holdOffOthers(const RunKeyboard& keyboard);

  // Ends a modifier that a stroke has held for itself.
  void release(uint16_t keyboard, uint8_t keycode);

  // Presses again what the run has released and the user holds, and locks again what it unlocked.
  void endRun(const RunKeyboard& keyboard);

  // Takes back what endRun() has pressed. At the end of the program.
  void letGo();

  // On the reader's thread: the user pressed a key before the server had carried out the request
  // that follows number `sequence`, or released it. PersonsKeys knows of it already.
  void keyPressed(uint16_t keyboard, uint8_t keycode, uint32_t sequence);
  void keyReleased(uint8_t keycode);

  // On the reader's thread.
  void stateChanged();

  // Ends every wait. Any thread.
  void abandonWaits();

 private:
  void pressAgain(uint16_t keyboard, uint8_t keycode);

  Connection& m_connection;
  KeySender& m_sender;
  PersonsKeys& m_persons;
  std::mutex m_mutex;
  std::condition_variable m_stateChanged;
  bool m_abandoned = false;
  KeycodeSet m_released;  // by the run under way
  // The number of the latest request that released a key.
  std::array<std::optional<uint32_t>, 256> m_lastRelease;
  // Pressed by endRun(), on which keyboard, and still to be released there along with the user's.
  std::map<uint8_t, uint16_t> m_pressedAgain;
};

}  // namespace zarvy::x11
