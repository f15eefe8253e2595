#pragma once

#include <xcb/xcb.h>

#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/keyboard/ModifierKeys.h"

namespace zarvy::x11 {

class Connection;

// One look at the keyboard, as applications see it: what is in force, which keys are down, which
// keymap there is and where keys go. All is asked for in one round trip, since every run of typing
// begins with it.
struct KeyboardSnapshot {
  KeyboardState state;
  KeycodeSet down;
  xcb_atom_t keymap = XCB_ATOM_NONE;     // as KeymapName tells
  xcb_window_t focus = XCB_WINDOW_NONE;  // the window that keys go to; XCB_INPUT_FOCUS_* too

  // Any thread; empty where the server does not answer.
  [[nodiscard]] static KeyboardSnapshot take(Connection& connection);
};

}  // namespace zarvy::x11
