#pragma once

#include <QtGlobal>

namespace zarvy::virtualkey {

// Virtual key codes name a place on the keyboard, whatever the layout writes on it. These are the
// ones that the program acts on; adapters translate the rest at their border.
inline constexpr quint16 unicodeText = 0;  // the key code of an event that carries text
inline constexpr quint16 returnKey = 36;
inline constexpr quint16 tab = 48;
inline constexpr quint16 space = 49;
inline constexpr quint16 deleteBackward = 51;
inline constexpr quint16 escape = 53;
inline constexpr quint16 leftArrow = 123;
inline constexpr quint16 rightArrow = 124;
inline constexpr quint16 downArrow = 125;
inline constexpr quint16 upArrow = 126;

}  // namespace zarvy::virtualkey
