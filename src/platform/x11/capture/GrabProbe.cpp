#include "platform/x11/capture/GrabProbe.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

std::optional<bool> GrabProbe::isGrabbedByAnother() const {
  xcb_connection_t* const xcb = m_connection.xcb();
  const XcbPtr<xcb_grab_keyboard_reply_t> reply(
      xcb_grab_keyboard_reply(xcb,
                              xcb_grab_keyboard(xcb, 0, m_window.id(), XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  if (!reply) return std::nullopt;
  return reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

bool GrabProbe::isPointerGrabbedByAnother() const {
  xcb_connection_t* const xcb = m_connection.xcb();
  const XcbPtr<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
      xcb,
      xcb_grab_pointer(xcb, 0, m_window.id(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                       XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
      nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

}  // namespace zarvy::x11
