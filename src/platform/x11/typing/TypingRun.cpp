#include "platform/x11/typing/TypingRun.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/typing/KeySender.h"

namespace zarvy::x11 {

TypingRun::TypingRun(Connection& connection, KeySender& sender, HeldModifiers& modifiers,
                     const HeldModifiers::RunKeyboard& keyboard)
    : m_connection(connection),
      m_sender(sender),
      m_modifiers(modifiers),
      m_keyboard(keyboard),
      m_lock(modifiers.lockForRun()) {
  xcb_grab_server(m_connection.xcb());
  m_modifiers.beginRun(keyboard);
}

TypingRun::~TypingRun() {
  m_modifiers.endRun(m_keyboard);
  xcb_ungrab_server(m_connection.xcb());
  m_sender.flush();
}

// Shift goes with most of what people type, and is held off at each stroke. The others belong to
// shortcuts and rare characters: a few strokes may pass, since there are many such keys.
void TypingRun::holdOffModifiers() {
  constexpr int strokesBetween = 4;
  m_modifiers.holdOffShift(m_keyboard);
  if (m_strokes++ % strokesBetween == strokesBetween - 1) m_modifiers.holdOffOthers(m_keyboard);
}

// A key that the user holds, on any keyboard, types nothing when it is pressed once more. So each
// key is released first, which does nothing to one that is up.
void TypingRun::type(const KeyStroke& stroke) {
  const uint16_t keyboard = m_keyboard.number;
  const ModifierKeys& keys = m_keyboard.keys;
  const bool shift = stroke.shift && !keys.shiftKeys.empty();
  const bool levelThree = stroke.levelThree && !keys.levelThreeKeys.empty();
  m_sender.release(keyboard, stroke.keycode);
  holdOffModifiers();
  if (levelThree) m_sender.press(keyboard, keys.levelThreeKeys.front());
  if (shift) m_sender.press(keyboard, keys.shiftKeys.front());
  m_sender.tap(keyboard, stroke.keycode);
  if (shift) m_modifiers.release(keyboard, keys.shiftKeys.front());
  if (levelThree) m_modifiers.release(keyboard, keys.levelThreeKeys.front());
}

}  // namespace zarvy::x11
