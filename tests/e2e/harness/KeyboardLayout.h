#pragma once

#include <cstdint>
#include <string>

#include "e2e/harness/Environment.h"
#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// The keyboard as a user sets it up.
struct KeyboardLayout {
  std::string layouts;       // as setxkbmap takes them, "ru,us" for example
  std::string options = {};  // "compose:menu" for example
};

// Puts `layout` into force by setxkbmap, as a user would. Throws std::runtime_error on failure.
void setKeyboardLayout(const KeyboardLayout& layout, const Environment& environment);

// Chooses a group of the layout for good, 0 being the first.
void lockGroup(const XConnection& connection, std::uint8_t group);

// How long a key is held until it repeats, and how often then.
void setAutorepeat(const XConnection& connection, std::uint16_t delayMilliseconds,
                   std::uint16_t intervalMilliseconds);

// Everything that the server maps, as text fit for comparing before with after.
struct MappingDump {
  std::string symbols;   // the key symbols of every key code and the modifier map
  std::string keyboard;  // the whole keyboard as xkbcomp writes it
};
[[nodiscard]] MappingDump dumpMapping(const XConnection& connection,
                                      const Environment& environment);

// What the server believes to be held or locked.
struct KeyboardState {
  std::uint32_t heldModifiers = 0;    // a bit for each real modifier that is down or latched
  std::uint32_t lockedModifiers = 0;  // Caps Lock and Num Lock among them
  std::uint32_t lockedGroup = 0;
  std::string heldKeys;  // the key codes that are down on any keyboard, in decimal
};
[[nodiscard]] KeyboardState keyboardState(const XConnection& connection);

}  // namespace zarvy::e2e
