#pragma once

#include "platform/x11/keyboard/KeymapSnapshot.h"
#include "platform/x11/typing/HeldModifiers.h"

namespace zarvy::x11 {

class Connection;
class KeySender;

// Keys that are posted in one go: modifiers that the user holds are out of the way from the making
// of this object to its end, and no other client's keys come in between. Keys of hardware can; each
// stroke is such that it and they do not change each other unless they meet within the few
// microseconds of that one stroke. One thread.
class TypingRun {
 public:
  TypingRun(Connection& connection, KeySender& sender, HeldModifiers& modifiers,
            const HeldModifiers::RunKeyboard& keyboard);
  ~TypingRun();
  TypingRun(const TypingRun&) = delete;
  TypingRun& operator=(const TypingRun&) = delete;

  // Holds Shift and LevelThree for this one stroke alone, where it wants them.
  void type(const KeyStroke& stroke);

 private:
  void holdOffModifiers();

  Connection& m_connection;
  KeySender& m_sender;
  HeldModifiers& m_modifiers;
  const HeldModifiers::RunKeyboard m_keyboard;
  const std::unique_lock<std::mutex> m_lock;
  int m_strokes = 0;
};

}  // namespace zarvy::x11
