#include "platform/x11/keyboard/KeyboardSnapshot.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeymapName.h"

namespace zarvy::x11 {

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
