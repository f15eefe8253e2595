#include "e2e/harness/SystemTray.h"

#include <functional>
#include <stdexcept>

#include <xcb/xtest.h>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

namespace {

constexpr auto deadline = std::chrono::seconds(20);

using WindowTest = std::function<bool(xcb_window_t)>;

// The first window at or below `window` that can be seen and satisfies `wanted`.
std::optional<xcb_window_t> findVisible(const XConnection& connection, xcb_window_t window,
                                        const WindowTest& wanted) {
  const auto attributes = owned(xcb_get_window_attributes_reply(
      connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
  if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) return std::nullopt;
  if (wanted(window)) return window;
  const auto tree = owned(
      xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
  if (!tree) return std::nullopt;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int child = 0; child < xcb_query_tree_children_length(tree.get()); ++child) {
    if (const auto found = findVisible(connection, children[child], wanted)) return found;
  }
  return std::nullopt;
}

// Whether it is a window that no window manager has to do with.
bool isOnTop(const XConnection& connection, xcb_window_t window) {
  const auto attributes = owned(xcb_get_window_attributes_reply(
      connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
  const auto tree = owned(
      xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
  return attributes && tree && attributes->override_redirect && tree->parent == connection.root();
}

std::string classOf(const XConnection& connection, xcb_window_t window) {
  const auto reply = owned(xcb_get_property_reply(
      connection.get(),
      xcb_get_property(connection.get(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 100),
      nullptr));
  if (!reply) return {};
  const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
  return {text, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

void press(const XConnection& connection, uint8_t kind, uint8_t detail, int x, int y) {
  xcb_test_fake_input(connection.get(), kind, detail, XCB_CURRENT_TIME, connection.root(),
                      static_cast<int16_t>(x), static_cast<int16_t>(y), 0);
}

// False where the window has gone.
bool click(const XConnection& connection, xcb_window_t window) {
  const auto size = owned(xcb_get_geometry_reply(
      connection.get(), xcb_get_geometry(connection.get(), window), nullptr));
  const auto place = owned(xcb_translate_coordinates_reply(
      connection.get(),
      xcb_translate_coordinates(connection.get(), window, connection.root(), 0, 0), nullptr));
  if (!size || !place) return false;
  const int x = place->dst_x + size->width / 2;
  const int y = place->dst_y + size->height / 2;
  press(connection, XCB_MOTION_NOTIFY, 0, x, y);
  press(connection, XCB_BUTTON_PRESS, 1, x, y);
  press(connection, XCB_BUTTON_RELEASE, 1, x, y);
  connection.synchronise();
  return true;
}

}  // namespace

SystemTray::SystemTray(const XConnection& connection, const Environment& environment,
                       const std::string& logFolder)
    : m_connection(connection),
      m_process({.program = "trayer",
                 .arguments = {"--edge", "top", "--align", "right", "--widthtype", "request",
                               "--height", "28"},
                 .environment = environment,
                 .errorFile = logFolder + "/trayer.log",
                 .descriptors = {}}) {
  const auto hasOwner = [&] {
    const auto owner = owned(xcb_get_selection_owner_reply(
        connection.get(),
        xcb_get_selection_owner(connection.get(), connection.atom("_NET_SYSTEM_TRAY_S0")),
        nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
  };
  if (!waitUntil(hasOwner, deadline)) throw std::runtime_error("the tray did not come up");
}

bool SystemTray::clickIconOf(const std::string& windowClass) {
  const auto hasClass = [this](const std::string& name) {
    return [this, name](xcb_window_t window) {
      return classOf(m_connection, window).find(name) != std::string::npos;
    };
  };
  std::optional<xcb_window_t> icon;
  static_cast<void>(waitUntil(
      [&] {
        const auto panel = findVisible(m_connection, m_connection.root(), hasClass("trayer"));
        if (panel) icon = findVisible(m_connection, *panel, hasClass(windowClass));
        return icon.has_value();
      },
      deadline));
  return icon && click(m_connection, *icon);
}

bool SystemTray::waitForMenuOf(const std::string& windowClass, bool present) {
  const auto isMenu = [&](xcb_window_t window) {
    return isOnTop(m_connection, window) &&
           classOf(m_connection, window).find(windowClass) != std::string::npos;
  };
  return waitUntil(
      [&] { return findVisible(m_connection, m_connection.root(), isMenu).has_value() == present; },
      deadline);
}

}  // namespace zarvy::e2e
