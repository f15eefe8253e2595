#include "platform/x11/hearing/GrabWatch.h"

#include <xcb/xinput.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

namespace {

// The focus may move on while it is being asked for; it does not do so for ever.
constexpr int mostMoves = 5;

}  // namespace

GrabWatch::GrabWatch(Connection& connection) : m_connection(connection) {
  followFocus();
}

std::chrono::steady_clock::duration GrabWatch::grabbedFor() const {
  const Instant since = m_grabbedAt.load();
  if (since == notGrabbed) return {};
  return std::chrono::steady_clock::now() - since;
}

void GrabWatch::handleEvent(const xcb_generic_event_t& event) {
  if (typeOf(event) != XCB_GE_GENERIC) return;
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != m_connection.xinputOpcode()) return;
  const auto& focus = reinterpret_cast<const xcb_input_focus_in_event_t&>(event);
  if (generic.event_type == XCB_INPUT_FOCUS_IN) handleFocusChange(focus.mode, true);
  if (generic.event_type == XCB_INPUT_FOCUS_OUT) handleFocusChange(focus.mode, false);
}

void GrabWatch::handleFocusChange(uint8_t mode, bool into) {
  switch (mode) {
    case XCB_INPUT_NOTIFY_MODE_GRAB:
      if (!into) m_grabbedAt = std::chrono::steady_clock::now();
      break;
    case XCB_INPUT_NOTIFY_MODE_UNGRAB:
      if (into) m_grabbedAt = notGrabbed;
      break;
    case XCB_INPUT_NOTIFY_MODE_NORMAL:  // never said during a grab
      m_grabbedAt = notGrabbed;
      followFocus();
      break;
    case XCB_INPUT_NOTIFY_MODE_WHILE_GRABBED:
      followFocus();
      break;
    default:
      break;
  }
}

void GrabWatch::followFocus() {
  for (int move = 0; move < mostMoves; ++move) {
    const xcb_window_t window = focusedWindow();
    if (window == m_window) return;
    m_window = window;
    if (window == XCB_WINDOW_NONE) continue;
    selectInputEvents(m_connection, window, XCB_INPUT_DEVICE_ALL_MASTER,
                      XCB_INPUT_XI_EVENT_MASK_FOCUS_IN | XCB_INPUT_XI_EVENT_MASK_FOCUS_OUT);
  }
}

// None where it is no window of an application: nowhere, or wherever the pointer is.
xcb_window_t GrabWatch::focusedWindow() const {
  const XcbPtr<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
      m_connection.xcb(), xcb_get_input_focus(m_connection.xcb()), nullptr));
  const bool isWindow =
      reply && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT && reply->focus != m_connection.root();
  return isWindow ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace zarvy::x11
