#include "platform/x11/keyboard/KeyboardState.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"

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

}  // namespace zarvy::x11
