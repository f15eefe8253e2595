#pragma once

#include <cstdint>

#include <xcb/xcb.h>

#include "platform/x11/keyboard/KeycodeSet.h"

struct xcb_xkb_get_state_reply_t;
struct xcb_xkb_state_notify_event_t;

namespace zarvy::x11 {

class Connection;

// The modifiers and layouts in force at one moment, as the server gives them. Modifier masks are
// X's real ones; layouts are XKB groups from 0.
struct KeyboardState {
  uint32_t heldModifiers = 0;
  uint32_t latchedModifiers = 0;
  uint32_t lockedModifiers = 0;
  int32_t heldLayout = 0;
  int32_t latchedLayout = 0;
  uint32_t lockedLayout = 0;
  uint32_t effectiveLayout = 0;

  bool operator==(const KeyboardState&) const = default;

  [[nodiscard]] uint32_t effectiveModifiers() const {
    return heldModifiers | latchedModifiers | lockedModifiers;
  }

  [[nodiscard]] static KeyboardState of(const xcb_xkb_state_notify_event_t& event);
  [[nodiscard]] static KeyboardState of(const xcb_xkb_get_state_reply_t& reply);

  // Asks the server; the default state where it does not answer. Any thread.
  [[nodiscard]] static KeyboardState query(Connection& connection);
};

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
