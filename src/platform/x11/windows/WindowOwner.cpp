#include "platform/x11/windows/WindowOwner.h"

#include <xcb/xcb.h>

namespace zarvy::x11 {

bool isMadeOn(xcb_connection_t* connection, uint32_t window) {
  const xcb_setup_t* setup = xcb_get_setup(connection);
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

}  // namespace zarvy::x11
