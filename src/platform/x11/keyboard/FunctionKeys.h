#pragma once

#include <optional>

#include <QtGlobal>

#include <xkbcommon/xkbcommon.h>

namespace zarvy::x11 {

// The virtual key code of a symbol that stands for a function, not for text: BackSpace, Return, the
// arrows. Users move these about, and what counts then is what the key does.
[[nodiscard]] std::optional<quint16> functionOfSymbol(xkb_keysym_t symbol);

// The same for the arrows that the keypad has while Num Lock is off. Not a matter of the key's
// plain symbol: the same key types a digit.
[[nodiscard]] std::optional<quint16> keypadArrow(xkb_keysym_t symbol);

// Whether a virtual key code is that of such a function.
[[nodiscard]] bool isFunction(quint16 virtualKey);

}  // namespace zarvy::x11
