#include "platform/x11/connection/XEvents.h"

#include <algorithm>

#include <xcb/xinput.h>

#include "platform/x11/connection/Connection.h"

namespace zarvy::x11 {
namespace {

void send(Connection& connection, xcb_window_t target, uint32_t mask,
          const ClientMessage& message) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = message.window;
  event.type = message.type;
  std::copy(message.data.begin(), message.data.end(), event.data.data32);
  xcb_send_event(connection.xcb(), 0, target, mask, reinterpret_cast<const char*>(&event));
}

}  // namespace

void selectInputEvents(Connection& connection, xcb_window_t window, uint16_t device,
                       uint32_t mask) {
  struct {
    xcb_input_event_mask_t head;
    uint32_t mask;
  } selection{{.deviceid = device, .mask_len = 1}, mask};
  xcb_input_xi_select_events(connection.xcb(), window, 1, &selection.head);
}

// Without an event mask it goes to the client that made the window.
void sendToOwner(Connection& connection, const ClientMessage& message) {
  send(connection, message.window, XCB_EVENT_MASK_NO_EVENT, message);
}

void sendToWindowManager(Connection& connection, xcb_window_t root, const ClientMessage& message) {
  send(connection, root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
       message);
}

}  // namespace zarvy::x11
