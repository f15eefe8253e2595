#include "platform/x11/keyboard/KeyboardState.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"

namespace zarvy::x11 {

namespace {

// Events and replies name their fields alike.
template <typename Told>
KeyboardState stateOf(const Told& told) {
  return {.heldModifiers = told.baseMods,
          .latchedModifiers = told.latchedMods,
          .lockedModifiers = told.lockedMods,
          .heldLayout = told.baseGroup,
          .latchedLayout = told.latchedGroup,
          .lockedLayout = told.lockedGroup,
          .effectiveLayout = told.group};
}

}  // namespace

KeyboardState KeyboardState::of(const xcb_xkb_state_notify_event_t& event) {
  return stateOf(event);
}

KeyboardState KeyboardState::of(const xcb_xkb_get_state_reply_t& reply) {
  return stateOf(reply);
}

KeyboardState KeyboardState::query(Connection& connection) {
  const XcbPtr<xcb_xkb_get_state_reply_t> reply(xcb_xkb_get_state_reply(
      connection.xcb(), xcb_xkb_get_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
  return reply ? of(*reply) : KeyboardState();
}

KeyboardSnapshot KeyboardSnapshot::take(Connection& connection) {
  xcb_connection_t* xcb = connection.xcb();
  const auto stateCookie = xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD);
  const auto keysCookie = xcb_query_keymap(xcb);
  const auto focusCookie = xcb_get_input_focus(xcb);
  const KeymapName keymap = KeymapName::ask(connection, XCB_XKB_ID_USE_CORE_KBD);
  const XcbPtr<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(xcb, stateCookie, nullptr));
  const XcbPtr<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(xcb, keysCookie, nullptr));
  const XcbPtr<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(xcb, focusCookie, nullptr));
  KeyboardSnapshot look;
  if (state) look.state = KeyboardState::of(*state);
  if (keys) look.down = keycodesOfBits(keys->keys);
  if (focus) look.focus = focus->focus;
  look.keymap = keymap.answer();
  return look;
}

}  // namespace zarvy::x11
