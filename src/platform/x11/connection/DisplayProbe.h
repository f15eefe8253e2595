#pragma once

namespace zarvy::x11 {

// Whether the X display that the environment names answers. Asks with a connection of its own, so
// it may be called before anything else is made.
[[nodiscard]] bool canReachDisplay();

}  // namespace zarvy::x11
