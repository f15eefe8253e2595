#include "platform/x11/hearing/KeyFence.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"

namespace zarvy::x11 {

KeyFence::KeyFence(Connection& connection)
    : m_connection(connection), m_window(xcb_generate_id(connection.xcb())) {
  xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                    1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

KeyFence::~KeyFence() {
  xcb_destroy_window(m_connection.xcb(), m_window);
}

// Without an event mask it goes to whoever made the window.
void KeyFence::set() {
  xcb_client_message_event_t fence{};
  fence.response_type = XCB_CLIENT_MESSAGE;
  fence.format = 32;
  fence.window = m_window;
  fence.type = XCB_ATOM_INTEGER;
  ++m_set;
  xcb_send_event(m_connection.xcb(), 0, m_window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&fence));
  m_connection.flush();
}

void KeyFence::handleEvent(const xcb_generic_event_t& event) {
  if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
  const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
  if (message.window == m_window) ++m_passed;
}

}  // namespace zarvy::x11
