#pragma once

#include <optional>
#include <string_view>

#include <QtGlobal>

namespace zarvy::x11 {

// The virtual key code of a place on the keyboard, by the name XKB gives the place ("AC01" is the
// key that types "a" on a US keyboard). Places that have no virtual key code of their own get
// `unnamedKeyBase` plus their X key code, so that two keys never share a code.
inline constexpr quint16 unnamedKeyBase = 0x100;

[[nodiscard]] std::optional<quint16> virtualKeyOfPosition(std::string_view xkbKeyName);

// How many keyboards have a key at a place. A key that no keyboard has is not pressed by mistake.
enum class KeyRarity {
  nowhere,      // places without a name
  exceptional,  // places that are named by a number: keys for media, cameras, remote controls
  somewhere     // the rest: on the keyboards of some countries, if not on all
};

[[nodiscard]] KeyRarity rarityOfPosition(std::string_view xkbKeyName);

}  // namespace zarvy::x11
