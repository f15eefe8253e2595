#include "platform/x11/connection/DisplayProbe.h"

#include <xcb/xcb.h>

namespace zarvy::x11 {

bool canReachDisplay() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool isReached = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return isReached;
}

}  // namespace zarvy::x11
