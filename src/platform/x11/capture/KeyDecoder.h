#pragma once

#include <memory>

#include "platform/KeyEventSource.h"
#include "platform/x11/capture/ComposeSequence.h"
#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"

namespace zarvy::x11 {

// Turns a key code into what the rest of the program knows of a key press. One thread.
class KeyDecoder {
 public:
  explicit KeyDecoder(std::shared_ptr<const KeymapSnapshot> snapshot);

  void setKeymap(std::shared_ptr<const KeymapSnapshot> snapshot);
  void setState(const KeyboardState& state);

  // The press of a key that the user made. `locationX` is left at 0.
  [[nodiscard]] KeyEvent decodePress(uint8_t keycode);

  // A dead key or a Compose sequence that has begun goes no further.
  void breakOffSequence() { m_compose.breakOff(); }

 private:
  [[nodiscard]] quint16 keyCodeOf(uint8_t keycode, xkb_keysym_t symbol) const;
  // A shortcut takes no part in a dead key's sequence.
  [[nodiscard]] bool isShortcut() const;
  // A key opens a menu then, or does nothing. AltGr is not Alt, even where both share a modifier.
  [[nodiscard]] bool isWithAlt() const;
  [[nodiscard]] std::optional<QString> charactersOf(xkb_keysym_t symbol);

  std::shared_ptr<const KeymapSnapshot> m_snapshot;
  KeyboardState m_keyboard;
  // Without the modifiers that are ignored for text, Caps Lock among them.
  KeymapSnapshot::State m_textState;
  ComposeSequence m_compose;
};

}  // namespace zarvy::x11
