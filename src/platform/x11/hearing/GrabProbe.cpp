#include "platform/x11/hearing/GrabProbe.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

GrabProbe::GrabProbe(Connection& connection)
    : m_connection(connection), m_window(xcb_generate_id(connection.xcb())) {
  xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                    1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

GrabProbe::~GrabProbe() {
  xcb_destroy_window(m_connection.xcb(), m_window);
}

std::optional<bool> GrabProbe::isGrabbedByAnother() const {
  xcb_connection_t* const xcb = m_connection.xcb();
  const XcbPtr<xcb_grab_keyboard_reply_t> reply(
      xcb_grab_keyboard_reply(xcb,
                              xcb_grab_keyboard(xcb, 0, m_window, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  if (!reply) return std::nullopt;
  return reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

}  // namespace zarvy::x11
