#include "platform/x11/keyboard/KeyboardState.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"

namespace zarvy::x11 {

KeyboardState KeyboardState::of(const xcb_xkb_state_notify_event_t& event) {
  return {.heldModifiers = event.baseMods,
          .latchedModifiers = event.latchedMods,
          .lockedModifiers = event.lockedMods,
          .heldLayout = event.baseGroup,
          .latchedLayout = event.latchedGroup,
          .lockedLayout = event.lockedGroup,
          .effectiveLayout = event.group};
}

KeyboardState KeyboardState::of(const xcb_xkb_get_state_reply_t& reply) {
  return {.heldModifiers = reply.baseMods,
          .latchedModifiers = reply.latchedMods,
          .lockedModifiers = reply.lockedMods,
          .heldLayout = reply.baseGroup,
          .latchedLayout = reply.latchedGroup,
          .lockedLayout = reply.lockedGroup,
          .effectiveLayout = reply.group};
}

KeyboardState KeyboardState::query(Connection& connection) {
  const XcbPtr<xcb_xkb_get_state_reply_t> reply(xcb_xkb_get_state_reply(
      connection.xcb(), xcb_xkb_get_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
  return reply ? of(*reply) : KeyboardState();
}

}  // namespace zarvy::x11
