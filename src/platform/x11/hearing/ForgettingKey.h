#pragma once

#include "platform/KeyEvent.h"
#include "platform/VirtualKey.h"

namespace zarvy::x11 {

// What is told in place of a key that nobody here is to know: Escape, which only has forgotten what
// was typed before it.
[[nodiscard]] inline KeyEvent forgettingKey() {
  return {.keyCode = virtualkey::escape,
          .modifierFlags = 0,
          .charactersIgnoringModifiers = std::nullopt,
          .locationX = 0};
}

}  // namespace zarvy::x11
