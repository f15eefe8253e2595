#include "platform/x11/connection/EventReader.h"

#include <pthread.h>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

EventReader::EventReader(Connection& connection) : m_connection(connection), m_wakeUp(connection) {}

EventReader::~EventReader() {
  if (!m_thread.joinable()) return;
  m_wakeUp.sendMessage();
  m_thread.join();
}

void EventReader::addListener(Listener listener) {
  m_listeners.push_back(std::move(listener));
}

void EventReader::start(std::function<void()> onConnectionLost) {
  m_onConnectionLost = std::move(onConnectionLost);
  m_thread = std::thread([this] { run(); });
  pthread_setname_np(m_thread.native_handle(), "x11-events");
}

xcb_generic_event_t* EventReader::nextEvent() {
  if (xcb_generic_event_t* event = xcb_poll_for_queued_event(m_connection.xcb())) return event;
  if (m_pause) {
    const std::chrono::microseconds pause = m_pause();
    if (pause.count() > 0) std::this_thread::sleep_for(pause);
  }
  return xcb_wait_for_event(m_connection.xcb());
}

void EventReader::run() {
  for (;;) {
    const XcbPtr<xcb_generic_event_t> event(nextEvent());
    if (!event) {
      m_onConnectionLost();
      return;
    }
    if (m_wakeUp.isMessage(*event)) return;
    // Type 0 is an error of a request whose answer is not waited for, such as a message to a window
    // that has just been closed: nothing to be done.
    if (typeOf(*event) == 0) continue;
    for (const Listener& listener : m_listeners) listener(*event);
  }
}

}  // namespace zarvy::x11
