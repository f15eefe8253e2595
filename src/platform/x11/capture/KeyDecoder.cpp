#include "platform/x11/capture/KeyDecoder.h"

#include <array>
#include <utility>

#include "platform/x11/keyboard/FunctionKeys.h"
#include "platform/x11/keyboard/KeyPositions.h"

namespace zarvy::x11 {

KeyDecoder::KeyDecoder(std::shared_ptr<const KeymapSnapshot> snapshot) {
  setKeymap(std::move(snapshot));
}

void KeyDecoder::setKeymap(std::shared_ptr<const KeymapSnapshot> snapshot) {
  m_snapshot = std::move(snapshot);
  m_textState = KeymapSnapshot::newState(m_snapshot);
  setState(m_keyboard);
}

void KeyDecoder::setState(const KeyboardState& state) {
  m_keyboard = state;
  const uint32_t kept = ~m_snapshot->modifiers().ignoredForText();
  xkb_state_update_mask(m_textState.get(), state.heldModifiers & kept,
                        state.latchedModifiers & kept, state.lockedModifiers & kept,
                        static_cast<xkb_layout_index_t>(state.heldLayout),
                        static_cast<xkb_layout_index_t>(state.latchedLayout), state.lockedLayout);
}

KeyEvent KeyDecoder::decodePress(uint8_t keycode) {
  KeyEvent event;
  const xkb_keysym_t symbol = xkb_state_key_get_one_sym(m_textState.get(), keycode);
  event.keyCode = keyCodeOf(keycode, symbol);
  event.modifierFlags = m_snapshot->modifiers().flagsOf(m_keyboard.effectiveModifiers());
  event.charactersIgnoringModifiers = charactersOf(symbol);
  return event;
}

quint16 KeyDecoder::keyCodeOf(uint8_t keycode, xkb_keysym_t symbol) const {
  // A BackSpace that takes back a dead key deletes nothing.
  const bool isForSequence = symbol == XKB_KEY_BackSpace && !isShortcut() && m_compose.isUnderWay();
  if (isForSequence) return static_cast<quint16>(unnamedKeyBase + keycode);
  if (const auto function = functionOfSymbol(symbol)) return *function;
  return keypadArrow(symbol).value_or(m_snapshot->virtualKey(keycode));
}

bool KeyDecoder::isShortcut() const {
  const ModifierKeys& modifiers = m_snapshot->modifiers();
  return (m_keyboard.effectiveModifiers() & (modifiers.control | modifiers.command)) != 0 ||
         isWithAlt();
}

bool KeyDecoder::isWithAlt() const {
  const ModifierKeys& modifiers = m_snapshot->modifiers();
  return (m_keyboard.effectiveModifiers() & modifiers.option & modifiers.ignoredForText()) != 0;
}

std::optional<QString> KeyDecoder::charactersOf(xkb_keysym_t symbol) {
  if (symbol == XKB_KEY_NoSymbol || isWithAlt()) return std::nullopt;
  std::optional<QString> plain;
  if (const char32_t character = xkb_keysym_to_utf32(symbol); character != 0) {
    plain = QString::fromUcs4(&character, 1);
  }
  if (isShortcut()) return plain;
  return m_compose.feed(symbol, std::move(plain));
}

}  // namespace zarvy::x11
