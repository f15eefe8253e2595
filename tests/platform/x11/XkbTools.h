#pragma once

#include <cstdint>
#include <string>

#include "e2e/harness/Environment.h"

namespace zarvy::x11 {

// Gives one keyboard of the display a layout of its own, as `setxkbmap -device` does. Throws
// std::runtime_error on failure.
void setLayoutOfKeyboard(std::uint16_t device, const std::string& layout,
                         const e2e::Environment& environment);

// Puts a keymap, in the text form of xkbcomp, into force for every keyboard of the display. Throws
// std::runtime_error on failure.
void loadKeymap(const std::string& keymap, const e2e::Environment& environment);

}  // namespace zarvy::x11
