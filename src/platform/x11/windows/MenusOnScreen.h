#pragma once

#include <cstdint>

namespace zarvy::x11 {

class Connection;

// Whether a client, named by the base of its resources, has a menu open: a window above the control
// of window managers that says of itself to be a menu or a list to choose from; or, where the
// client is the window manager, whose windows say nothing, one that is no application's frame and
// does not cover the screen. Asks the server, and waits for it. Any thread.
[[nodiscard]] bool hasMenuOpen(const Connection& connection, uint32_t client);

// Whether `window` is on the screen, above the control of window managers, and belongs to a window
// of the same client that is on the screen as an ordinary one. Menus that say nothing of themselves
// do; the prompts that keep window managers out belong to no other window. The same threads.
[[nodiscard]] bool isPopupOfWindow(const Connection& connection, uint32_t window);

}  // namespace zarvy::x11
