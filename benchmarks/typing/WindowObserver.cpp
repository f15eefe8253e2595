#include "typing/WindowObserver.h"

#include <stdexcept>

namespace zarvy::benchmarks {

namespace {

constexpr auto patience = std::chrono::seconds(30);

// The frame around the window with the keyboard is told of it too, and so is the root window.
bool isForItself(const xcb_focus_in_event_t& event) {
  return event.detail != XCB_NOTIFY_DETAIL_VIRTUAL &&
         event.detail != XCB_NOTIFY_DETAIL_NONLINEAR_VIRTUAL &&
         event.detail != XCB_NOTIFY_DETAIL_POINTER;
}

}  // namespace

WindowObserver::WindowObserver(const std::string& display) : m_reader(display) {
  const e2e::XConnection& connection = m_reader.connection();
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_EVENT_MASK, &events);
  m_reader.start(
      [this](const xcb_generic_event_t& event, TimePoint arrival) { take(event, arrival); });
}

WindowObserver::~WindowObserver() {
  m_reader.stop();
}

void WindowObserver::forget() {
  const std::lock_guard lock(m_mutex);
  m_windows.clear();
  m_appearance.reset();
}

WindowObserver::TimePoint WindowObserver::waitForWindow() {
  std::unique_lock lock(m_mutex);
  if (!m_changed.wait_for(lock, patience, [this] { return m_appearance.has_value(); })) {
    throw std::runtime_error("no new window got the keyboard");
  }
  return m_appearance->arrival;
}

void WindowObserver::waitUntilGone() {
  std::unique_lock lock(m_mutex);
  if (!m_changed.wait_for(lock, patience,
                          [this] { return m_appearance && m_appearance->isGone; })) {
    throw std::runtime_error("the window stays");
  }
}

void WindowObserver::take(const xcb_generic_event_t& event, TimePoint arrival) {
  switch (typeOf(event)) {
    case XCB_CREATE_NOTIFY:
      return takeNew(reinterpret_cast<const xcb_create_notify_event_t&>(event).window);
    case XCB_MAP_NOTIFY: {
      const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
      return takeChange(map.window, &NewWindow::isMapped, true, arrival);
    }
    case XCB_UNMAP_NOTIFY: {
      const auto& unmap = reinterpret_cast<const xcb_unmap_notify_event_t&>(event);
      return takeChange(unmap.window, &NewWindow::isMapped, false, arrival);
    }
    case XCB_FOCUS_IN: {
      const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(event);
      if (isForItself(focus)) takeChange(focus.event, &NewWindow::hasKeyboard, true, arrival);
      return;
    }
    default:
      return;
  }
}

// The root window tells nothing more of a window that has got a frame around it, so that the window
// is asked itself; where that comes too late for an event, its state tells.
void WindowObserver::takeNew(xcb_window_t window) {
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE;
  xcb_connection_t* const connection = m_reader.connection().get();
  xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
  const auto attributesCookie = xcb_get_window_attributes(connection, window);
  const auto focusCookie = xcb_get_input_focus(connection);
  const auto attributes =
      e2e::owned(xcb_get_window_attributes_reply(connection, attributesCookie, nullptr));
  const auto focus = e2e::owned(xcb_get_input_focus_reply(connection, focusCookie, nullptr));
  if (!attributes || !focus) return;  // it has gone already
  const NewWindow state{.isMapped = attributes->map_state != XCB_MAP_STATE_UNMAPPED,
                        .hasKeyboard = focus->focus == window};
  const std::lock_guard lock(m_mutex);
  m_windows.insert({window, state});
  judge(window, std::chrono::steady_clock::now());
}

void WindowObserver::takeChange(xcb_window_t window, bool NewWindow::*property, bool value,
                                TimePoint arrival) {
  const std::lock_guard lock(m_mutex);
  const auto found = m_windows.find(window);
  if (found == m_windows.end()) return;
  found->second.*property = value;
  judge(window, arrival);
}

void WindowObserver::judge(xcb_window_t window, TimePoint arrival) {
  const NewWindow& state = m_windows.at(window);
  if (!m_appearance && state.isMapped && state.hasKeyboard) {
    m_appearance = Appearance{.window = window, .arrival = arrival};
  } else if (m_appearance && m_appearance->window == window && !state.isMapped) {
    m_appearance->isGone = true;
  }
  m_changed.notify_all();
}

}  // namespace zarvy::benchmarks
