#pragma once

#include <xcb/xcb.h>

#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/keyboard/ModifierKeys.h"

namespace zarvy::x11 {

class Connection;

// One look at the keyboard, as applications see it: what is in force, which keys are down, and
// which keymaps there are. All is asked for in one round trip, since every run of typing begins
// with it.
struct KeyboardLook {
  KeyboardState state;
  KeycodeSet down;
  // Of the union of all keyboards and of the one that this program types on, as KeymapName tells.
  xcb_atom_t heardKeymap = XCB_ATOM_NONE;
  xcb_atom_t typedKeymap = XCB_ATOM_NONE;

  // `typed` is the XInput number of the keyboard that this program types on. Any thread; empty
  // where the server does not answer.
  [[nodiscard]] static KeyboardLook take(Connection& connection, uint16_t typed);
};

}  // namespace zarvy::x11
