#include "platform/x11/connection/XEvents.h"

#include <xcb/xinput.h>

#include "platform/x11/connection/Connection.h"

namespace zarvy::x11 {

void selectInputEvents(Connection& connection, xcb_window_t window, uint16_t device,
                       uint32_t mask) {
  struct {
    xcb_input_event_mask_t head;
    uint32_t mask;
  } selection{{.deviceid = device, .mask_len = 1}, mask};
  xcb_input_xi_select_events(connection.xcb(), window, 1, &selection.head);
}

}  // namespace zarvy::x11
