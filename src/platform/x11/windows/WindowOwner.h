#pragma once

#include <cstdint>

struct xcb_connection_t;

namespace zarvy::x11 {

// Whether a window of the display was made on that connection to it: each connection names what it
// makes out of a range of numbers of its own. Asks nobody. Any thread.
[[nodiscard]] bool isMadeOn(xcb_connection_t* connection, uint32_t window);

}  // namespace zarvy::x11
