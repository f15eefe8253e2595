#include "platform/x11/capture/GrabWatch.h"

#include <algorithm>

#include <xcb/xinput.h>

#include "platform/x11/capture/KeyFence.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

namespace {

// The focus may move on while it is being asked for; it does not do so for ever.
constexpr int mostMoves = 5;

// So may the keyboard change hands while the server answers.
constexpr int mostQuestions = 5;

// For so long at most a key waits to be read.
constexpr int32_t longestDelay = 60'000;  // milliseconds

// The server's times wrap around after 49 days.
int32_t timeBetween(xcb_timestamp_t earlier, xcb_timestamp_t later) {
  return static_cast<int32_t>(later - earlier);
}

}  // namespace

GrabWatch::GrabWatch(Connection& connection, KeyFence& fence)
    : m_connection(connection), m_fence(fence), m_probe(connection) {
  followFocus();
}

bool GrabWatch::isGrabbed() const {
  const std::scoped_lock guard(m_lock);
  return m_since.has_value();
}

bool GrabWatch::mayHide(xcb_timestamp_t time) const {
  const std::scoped_lock guard(m_lock);
  if (m_since) return true;
  const int32_t before = m_lastUngrab ? timeBetween(time, *m_lastUngrab) : 0;
  return before > 0 && before < longestDelay;
}

std::chrono::steady_clock::duration GrabWatch::grabbedFor() const {
  const std::scoped_lock guard(m_lock);
  if (!m_since) return {};
  return std::chrono::steady_clock::now() - *m_since;
}

std::optional<GrabWatch::Holder> GrabWatch::holder() const {
  const std::scoped_lock guard(m_lock);
  return m_recorded ? std::optional(m_recorded->holder) : std::nullopt;
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
      if (!into) handleNews(News::inOrder, [this] { m_isTold = true; });
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
  handleNews(News::inOrder, [this, time] {
    m_isTold = false;
    if (m_recorded && timeBetween(m_recorded->time, time) > 0) m_recorded.reset();
  });
  lookAgainIfFound();
}

// The keys before an ungrab are known by their time.
void GrabWatch::handleRecorded(const GrabChange& change, uint32_t client, xcb_timestamp_t time) {
  handleNews(News::inOrder, [&] {
    if (change.kind == GrabChange::Kind::ungrab) m_lastUngrab = time;
    if (change.kind == GrabChange::Kind::grab) {
      m_recorded = {.holder = {.client = client, .window = change.window},
                    .protocol = change.protocol,
                    .time = time};
      m_isFound = false;
    } else if (m_recorded && m_recorded->holder.client == client &&
               m_recorded->protocol == change.protocol) {
      m_recorded.reset();
    }
  });
  if (change.kind == GrabChange::Kind::ungrab) lookAgainIfFound();
}

void GrabWatch::handleLostClient(uint32_t client) {
  handleNews(News::ahead, [&] {
    if (m_recorded && m_recorded->holder.client == client) m_recorded.reset();
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
  update(News::ahead, [&] {
    isBelieved = m_newsCount == newsCount;
    if (!isBelieved) return;
    m_isFound = isGrabbed && !m_isTold && !m_recorded;
    if (isGrabbed) return;
    m_isTold = false;
    m_recorded.reset();
  });
  return isBelieved;
}

// Which client has the keyboard is not known. One has given it back or has ended, and that may be
// the one that had it.
void GrabWatch::lookAgainIfFound() {
  const bool isFound = [this] {
    const std::scoped_lock guard(m_lock);
    return m_isFound;
  }();
  if (isFound) lookAgain();
}

void GrabWatch::handleNews(News news, const std::function<void()>& change) {
  update(news, [&] {
    ++m_newsCount;
    change();
  });
}

// `change` is made under the lock.
void GrabWatch::update(News news, const std::function<void()>& change) {
  {
    const std::scoped_lock guard(m_lock);
    change();
    const bool isGrabbed = m_isTold || m_recorded || m_isFound;
    if (isGrabbed == m_since.has_value()) return;
    if (!isGrabbed) {
      if (news == News::ahead) m_fence.set();
      m_since.reset();
      return;
    }
    m_since = std::chrono::steady_clock::now();
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
