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

// So may the keyboard change hands while the server answers.
constexpr int mostQuestions = 5;

// The server's times wrap around after 49 days.
bool isAfter(xcb_timestamp_t left, xcb_timestamp_t right) {
  return static_cast<int32_t>(left - right) > 0;
}

}  // namespace

GrabWatch::GrabWatch(Connection& connection) : m_connection(connection), m_probe(connection) {
  followFocus();
}

bool GrabWatch::isGrabbed() const {
  const std::scoped_lock guard(m_lock);
  return m_since.has_value();
}

bool GrabWatch::mayHide(xcb_timestamp_t time) const {
  const std::scoped_lock guard(m_lock);
  return m_since || (m_lastUngrab && isAfter(*m_lastUngrab, time));
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
      if (!into) handleNews([this] { m_isTold = true; });
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
  handleNews([this, time] {
    m_isTold = false;
    if (m_recorded && isAfter(time, m_recorded->time)) m_recorded.reset();
  });
  lookAgainIfFound();
}

void GrabWatch::handleRecorded(const GrabChange& change, uint32_t client, xcb_timestamp_t time) {
  handleNews([&] {
    if (change.kind == GrabChange::Kind::ungrab) m_lastUngrab = time;
    if (change.kind == GrabChange::Kind::grab) {
      m_recorded = {.client = client, .protocol = change.protocol, .time = time};
      m_isFound = false;
    } else if (m_recorded && m_recorded->client == client &&
               m_recorded->protocol == change.protocol) {
      m_recorded.reset();
    }
  });
  if (change.kind == GrabChange::Kind::ungrab) lookAgainIfFound();
}

void GrabWatch::handleLostClient(uint32_t client) {
  handleNews([&] {
    if (m_recorded && m_recorded->client == client) m_recorded.reset();
  });
  lookAgainIfFound();
}

void GrabWatch::lookAgain() {
  for (int question = 0; question < mostQuestions; ++question) {
    const std::uint64_t newsCount = m_newsCount;
    const std::optional<bool> isGrabbed = m_probe.isGrabbedByAnother();
    if (!isGrabbed || believe(*isGrabbed, newsCount)) return;
  }
}

// False, and nothing changes, where there has been news since the question was put: which of them
// is newer than the answer cannot be told.
bool GrabWatch::believe(bool isGrabbed, std::uint64_t newsCount) {
  bool isBelieved = false;
  update([&] {
    isBelieved = m_newsCount == newsCount;
    if (!isBelieved) return;
    m_isFound = isGrabbed && !m_isTold && !m_recorded;
    if (isGrabbed) return;
    m_isTold = false;
    m_recorded.reset();
  });
  return isBelieved;
}

// Whoever has the keyboard is not known: somebody gave it back or has ended, and it may be them.
void GrabWatch::lookAgainIfFound() {
  const bool isFound = [this] {
    const std::scoped_lock guard(m_lock);
    return m_isFound;
  }();
  if (isFound) lookAgain();
}

void GrabWatch::handleNews(const std::function<void()>& change) {
  update([&] {
    ++m_newsCount;
    change();
  });
}

// `change` is made under the lock.
void GrabWatch::update(const std::function<void()>& change) {
  {
    const std::scoped_lock guard(m_lock);
    change();
    const bool isGrabbed = m_isTold || m_recorded || m_isFound;
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
    if (m_onFocusMoved) m_onFocusMoved(window);
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
