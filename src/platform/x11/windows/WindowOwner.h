#pragma once

#include <cstdint>
#include <optional>

#include <QtGlobal>

struct xcb_connection_t;

namespace zarvy::x11 {

// Whether a window of the display was made on that connection to it: each connection names what it
// makes out of a range of numbers of its own. Does not ask the server. Any thread.
[[nodiscard]] bool isMadeOn(xcb_connection_t* connection, uint32_t window);

// The process of this machine behind another client of the display, which is named by anything that
// it has made there, a window for example. Asks the server's Resource extension. Any thread.
[[nodiscard]] std::optional<qint32> processOfClient(xcb_connection_t* connection,
                                                    uint32_t resource);

}  // namespace zarvy::x11
