#pragma once

#include <QtGlobal>

namespace zarvy::modifier {

// The modifier mask as the settings file stores it.
inline constexpr quint64 capsLock = 0x10000;
inline constexpr quint64 shift = 0x20000;
inline constexpr quint64 control = 0x40000;
inline constexpr quint64 option = 0x80000;    // Alt
inline constexpr quint64 command = 0x100000;  // Super, which some call Windows

}  // namespace zarvy::modifier
