#pragma once

#include <string>
#include <vector>

#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// What the window manager knows of the windows of the applications.
struct ManagedWindow {
  xcb_window_t id = XCB_WINDOW_NONE;
  std::string title;
  bool isInTaskbar = true;
  bool isInPager = true;
  bool hasIcon = false;
};

[[nodiscard]] std::vector<ManagedWindow> managedWindows(const XConnection& connection);

// The window that has the keyboard, as the window manager tells it.
[[nodiscard]] xcb_window_t activeWindow(const XConnection& connection);

// Asks for it to come to the front, as somebody does who turns to it. Does not wait.
void turnTo(const XConnection& connection, xcb_window_t window);

// Waits until there is a window of that title; absent where none comes.
[[nodiscard]] std::optional<ManagedWindow> waitForWindow(const XConnection& connection,
                                                         const std::string& title);

// Closes it as its button does, and waits until it has gone; false where it stays.
[[nodiscard]] bool closeWindow(const XConnection& connection, const ManagedWindow& window);

}  // namespace zarvy::e2e
