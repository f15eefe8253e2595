#pragma once

#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/keyboard/ModifierKeys.h"

namespace zarvy::x11 {

class Connection;

// One look at the keyboard, as applications see it: what is in force, and which keys are down. Both
// are asked for in one round trip, since every run of typing begins with it.
struct KeyboardLook {
  KeyboardState state;
  KeycodeSet down;

  // Any thread; empty where the server does not answer.
  [[nodiscard]] static KeyboardLook take(Connection& connection);
};

}  // namespace zarvy::x11
