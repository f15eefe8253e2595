#include "e2e/harness/Windows.h"

#include <algorithm>

#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/WindowManager.h"

namespace zarvy::e2e {

namespace {

constexpr auto deadline = std::chrono::seconds(20);

std::string titleOf(const XConnection& connection, xcb_window_t window) {
  constexpr std::uint32_t mostWords = 200;
  const auto reply = owned(xcb_get_property_reply(
      connection.get(),
      xcb_get_property(connection.get(), 0, window, connection.atom("_NET_WM_NAME"),
                       connection.atom("UTF8_STRING"), 0, mostWords),
      nullptr));
  if (!reply) return {};
  const auto* const text = static_cast<const char*>(xcb_get_property_value(reply.get()));
  return {text, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

// The source of a request that comes from the user.
constexpr std::uint32_t sourcePager = 2;

void askWindowManager(const XConnection& connection, xcb_window_t window,
                      const std::string& request, std::uint32_t firstWord) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = connection.atom(request);
  message.data.data32[0] = firstWord;
  xcb_send_event(connection.get(), 0, connection.root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&message));
  connection.synchronise();
}

}  // namespace

std::vector<ManagedWindow> managedWindows(const XConnection& connection) {
  const xcb_atom_t skipTaskbar = connection.atom("_NET_WM_STATE_SKIP_TASKBAR");
  const xcb_atom_t skipPager = connection.atom("_NET_WM_STATE_SKIP_PAGER");
  std::vector<ManagedWindow> windows;
  for (const xcb_window_t id : connection.property(connection.root(), "_NET_CLIENT_LIST")) {
    const auto states = connection.property(id, "_NET_WM_STATE");
    const auto has = [&states](xcb_atom_t state) {
      return std::find(states.begin(), states.end(), state) != states.end();
    };
    windows.push_back({.id = id,
                       .title = titleOf(connection, id),
                       .isInTaskbar = !has(skipTaskbar),
                       .isInPager = !has(skipPager),
                       .hasIcon = !connection.property(id, "_NET_WM_ICON").empty()});
  }
  return windows;
}

xcb_window_t activeWindow(const XConnection& connection) {
  const auto windows = connection.property(connection.root(), "_NET_ACTIVE_WINDOW");
  return windows.empty() ? xcb_window_t{XCB_WINDOW_NONE} : windows.front();
}

void turnTo(const XConnection& connection, xcb_window_t window) {
  askWindowManager(connection, window, "_NET_ACTIVE_WINDOW", sourcePager);
}

std::optional<ManagedWindow> waitForWindow(const XConnection& connection,
                                           const std::string& title) {
  std::optional<ManagedWindow> found;
  static_cast<void>(waitUntil(
      [&] {
        nudgeWindowManager(connection);
        for (const ManagedWindow& window : managedWindows(connection)) {
          if (window.title == title) found = window;
        }
        return found.has_value();
      },
      deadline));
  return found;
}

bool closeWindow(const XConnection& connection, const ManagedWindow& window) {
  askWindowManager(connection, window.id, "_NET_CLOSE_WINDOW", 0);
  return waitUntil(
      [&] {
        const auto windows = managedWindows(connection);
        return std::none_of(windows.begin(), windows.end(),
                            [&](const ManagedWindow& other) { return other.id == window.id; });
      },
      deadline);
}

}  // namespace zarvy::e2e
