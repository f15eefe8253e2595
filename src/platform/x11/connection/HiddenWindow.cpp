#include "platform/x11/connection/HiddenWindow.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"

namespace zarvy::x11 {

HiddenWindow::HiddenWindow(Connection& connection)
    : m_connection(connection), m_id(xcb_generate_id(connection.xcb())) {
  xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_id, m_connection.root(), 0, 0, 1, 1,
                    0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

HiddenWindow::~HiddenWindow() {
  xcb_destroy_window(m_connection.xcb(), m_id);
}

void HiddenWindow::sendMessage() const {
  sendToOwner(m_connection, {.window = m_id, .type = XCB_ATOM_INTEGER});
  m_connection.flush();
}

bool HiddenWindow::isMessage(const xcb_generic_event_t& event) const {
  return typeOf(event) == XCB_CLIENT_MESSAGE &&
         reinterpret_cast<const xcb_client_message_event_t&>(event).window == m_id;
}

}  // namespace zarvy::x11
