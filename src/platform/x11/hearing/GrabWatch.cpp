#include "platform/x11/hearing/GrabWatch.h"

#include <algorithm>

#include <xcb/xinput.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

namespace {

// The focus may move on while it is being asked for; it does not do so for ever.
constexpr int mostMoves = 5;

// The server's times wrap around after 49 days.
bool isAfter(xcb_timestamp_t left, xcb_timestamp_t right) {
  return static_cast<int32_t>(left - right) > 0;
}

}  // namespace

GrabWatch::GrabWatch(Connection& connection) : m_connection(connection) {
  followFocus();
}

bool GrabWatch::isGrabbed() const {
  const std::scoped_lock guard(m_lock);
  return m_since.has_value();
}

std::chrono::steady_clock::duration GrabWatch::grabbedFor() const {
  const std::scoped_lock guard(m_lock);
  if (!m_since) return {};
  return std::chrono::steady_clock::now() - *m_since;
}

std::optional<uint32_t> GrabWatch::holder() const {
  const std::scoped_lock guard(m_lock);
  return m_recorded ? std::optional(m_recorded->client) : std::nullopt;
}

void GrabWatch::handleEvent(const xcb_generic_event_t& event) {
  if (typeOf(event) != XCB_GE_GENERIC) return;
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != m_connection.xinputOpcode()) return;
  const auto& focus = reinterpret_cast<const xcb_input_enter_event_t&>(event);
  if (generic.event_type == XCB_INPUT_FOCUS_IN) handleFocusChange(focus, true);
  if (generic.event_type == XCB_INPUT_FOCUS_OUT) handleFocusChange(focus, false);
}

// A root window hears of a focus that was nowhere, or wherever the pointer is, and has come to some
// window; of nothing else that matters.
void GrabWatch::handleFocusChange(const xcb_input_enter_event_t& event, bool into) {
  if (isRoot(event.event)) return followFocus();
  switch (event.mode) {
    case XCB_INPUT_NOTIFY_MODE_GRAB:
      if (!into) update([this] { m_isTold = true; });
      break;
    case XCB_INPUT_NOTIFY_MODE_UNGRAB:
      if (into) endBefore(event.time);
      break;
    case XCB_INPUT_NOTIFY_MODE_NORMAL:  // never said during a grab
      endBefore(event.time);
      followFocus();
      break;
    case XCB_INPUT_NOTIFY_MODE_WHILE_GRABBED:
      followFocus();
      break;
    default:
      break;
  }
}

// The record may run ahead of the events and have told of a grab that comes after this end.
void GrabWatch::endBefore(xcb_timestamp_t time) {
  update([this, time] {
    m_isTold = false;
    if (m_recorded && isAfter(time, m_recorded->time)) m_recorded.reset();
  });
}

void GrabWatch::handleRecorded(const GrabChange& change, uint32_t client, xcb_timestamp_t time) {
  update([&] {
    if (change.kind == GrabChange::Kind::grab) {
      m_recorded = {.client = client, .protocol = change.protocol, .time = time};
    } else if (m_recorded && m_recorded->client == client &&
               m_recorded->protocol == change.protocol) {
      m_recorded.reset();
    }
  });
}

void GrabWatch::handleLostClient(uint32_t client) {
  update([&] {
    if (m_recorded && m_recorded->client == client) m_recorded.reset();
  });
}

// `change` is made under the lock.
void GrabWatch::update(const std::function<void()>& change) {
  {
    const std::scoped_lock guard(m_lock);
    change();
    const bool isGrabbed = m_isTold || m_recorded;
    if (isGrabbed == m_since.has_value()) return;
    m_since = isGrabbed ? std::optional(std::chrono::steady_clock::now()) : std::nullopt;
    if (!isGrabbed) return;
  }
  if (m_onGrab) m_onGrab();
}

void GrabWatch::followFocus() {
  for (int move = 0; move < mostMoves; ++move) {
    const xcb_window_t window = focusedWindow();
    if (window == m_window) return;
    m_window = window;
    if (m_onFocusMoved) m_onFocusMoved();
    if (window == XCB_WINDOW_NONE) continue;
    selectInputEvents(m_connection, window, XCB_INPUT_DEVICE_ALL_MASTER,
                      XCB_INPUT_XI_EVENT_MASK_FOCUS_IN | XCB_INPUT_XI_EVENT_MASK_FOCUS_OUT);
  }
}

bool GrabWatch::isRoot(xcb_window_t window) const {
  const auto& roots = m_connection.roots();
  return std::find(roots.begin(), roots.end(), window) != roots.end();
}

// None where it is no window of an application: nowhere, or wherever the pointer is.
xcb_window_t GrabWatch::focusedWindow() const {
  const XcbPtr<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
      m_connection.xcb(), xcb_get_input_focus(m_connection.xcb()), nullptr));
  const bool isWindow =
      reply && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT && !isRoot(reply->focus);
  return isWindow ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace zarvy::x11
