#include "platform/x11/connection/EventReader.h"

#include <pthread.h>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

EventReader::EventReader(Connection& connection) : m_connection(connection) {}

EventReader::~EventReader() {
  if (!m_thread.joinable()) return;
  wakeUp();
  m_thread.join();
}

void EventReader::addListener(Listener listener) {
  m_listeners.push_back(std::move(listener));
}

void EventReader::start(std::function<void()> onConnectionLost) {
  m_onConnectionLost = std::move(onConnectionLost);
  m_wakeUpWindow = xcb_generate_id(m_connection.xcb());
  xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_wakeUpWindow, m_connection.root(),
                    0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  m_thread = std::thread([this] { run(); });
  pthread_setname_np(m_thread.native_handle(), "x11-events");
}

void EventReader::run() {
  for (;;) {
    const XcbPtr<xcb_generic_event_t> event(xcb_wait_for_event(m_connection.xcb()));
    if (!event) {
      m_onConnectionLost();
      return;
    }
    const uint8_t type = typeOf(*event);
    if (type == XCB_CLIENT_MESSAGE &&
        reinterpret_cast<const xcb_client_message_event_t&>(*event).window == m_wakeUpWindow) {
      return;
    }
    // Type 0 is an error of a request whose answer nobody waits for, such as a message to a window
    // that has just been closed: nothing to be done.
    if (type == 0) continue;
    for (const Listener& listener : m_listeners) listener(*event);
  }
}

void EventReader::wakeUp() {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = m_wakeUpWindow;
  message.type = m_connection.atoms().wmProtocols;
  xcb_send_event(m_connection.xcb(), 0, m_wakeUpWindow, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  m_connection.flush();
}

}  // namespace zarvy::x11
