#include "platform/x11/windows/MenusOnScreen.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

namespace {

constexpr uint32_t mostTypes = 16;

// Of one entry, in pixels. Window managers keep smaller windows for purposes of their own.
constexpr uint16_t smallestMenu = 16;

// A window manager puts few windows of its own between its frame and the application's.
constexpr int deepestFrame = 3;

bool isOf(const Connection& connection, uint32_t client, xcb_window_t window) {
  return (window & ~xcb_get_setup(connection.xcb())->resource_id_mask) == client;
}

std::vector<xcb_window_t> childrenOf(const Connection& connection, xcb_window_t window) {
  xcb_connection_t* const xcb = connection.xcb();
  const XcbPtr<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
  if (!tree) return {};
  const xcb_window_t* const first = xcb_query_tree_children(tree.get());
  return {first, first + xcb_query_tree_children_length(tree.get())};
}

// A window that can be seen as far as it itself is concerned.
XcbPtr<xcb_get_window_attributes_reply_t> shownWindow(const Connection& connection,
                                                      xcb_window_t window) {
  xcb_connection_t* const xcb = connection.xcb();
  XcbPtr<xcb_get_window_attributes_reply_t> attributes(
      xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
  const bool isShown = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                       attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
  return isShown ? std::move(attributes) : nullptr;
}

bool saysToBeMenu(const Connection& connection, xcb_window_t window) {
  xcb_connection_t* const xcb = connection.xcb();
  const Atoms& atoms = connection.atoms();
  const std::array menus{atoms.netWmWindowTypeCombo, atoms.netWmWindowTypeDropdownMenu,
                         atoms.netWmWindowTypeMenu, atoms.netWmWindowTypePopupMenu};
  const XcbPtr<xcb_get_property_reply_t> types(xcb_get_property_reply(
      xcb, xcb_get_property(xcb, 0, window, atoms.netWmWindowType, XCB_ATOM_ATOM, 0, mostTypes),
      nullptr));
  if (!types || types->format != 32) return false;
  const auto* const first = static_cast<const xcb_atom_t*>(xcb_get_property_value(types.get()));
  return std::find_first_of(first, first + types->value_len, menus.begin(), menus.end()) !=
         first + types->value_len;
}

bool holdsWindowOfAnother(const Connection& connection, uint32_t client, xcb_window_t window,
                          int depth = deepestFrame) {
  const std::vector<xcb_window_t> children = childrenOf(connection, window);
  return std::any_of(children.begin(), children.end(), [&](xcb_window_t child) {
    return !isOf(connection, client, child) ||
           (depth > 1 && holdsWindowOfAnother(connection, client, child, depth - 1));
  });
}

bool isMenuSized(const Connection& connection, xcb_window_t root, xcb_window_t window) {
  xcb_connection_t* const xcb = connection.xcb();
  const auto sizeOf = xcb_get_geometry(xcb, window);
  const auto sizeOfScreen = xcb_get_geometry(xcb, root);
  const XcbPtr<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(xcb, sizeOf, nullptr));
  const XcbPtr<xcb_get_geometry_reply_t> screen(xcb_get_geometry_reply(xcb, sizeOfScreen, nullptr));
  return size && screen && size->width >= smallestMenu && size->height >= smallestMenu &&
         (size->width < screen->width || size->height < screen->height);
}

// The window that a property names; none where there is no such property.
xcb_window_t windowIn(const Connection& connection, xcb_window_t window, xcb_atom_t property) {
  xcb_connection_t* const xcb = connection.xcb();
  const XcbPtr<xcb_get_property_reply_t> named(xcb_get_property_reply(
      xcb, xcb_get_property(xcb, 0, window, property, XCB_ATOM_WINDOW, 0, 1), nullptr));
  if (!named || named->format != 32 || named->value_len == 0) return XCB_WINDOW_NONE;
  return *static_cast<const xcb_window_t*>(xcb_get_property_value(named.get()));
}

bool isWindowManager(const Connection& connection, xcb_window_t root, uint32_t client) {
  const xcb_window_t check = windowIn(connection, root, connection.atoms().netSupportingWmCheck);
  return check != XCB_WINDOW_NONE && isOf(connection, client, check);
}

}  // namespace

bool hasMenuOpen(const Connection& connection, uint32_t client) {
  const auto& roots = connection.roots();
  return std::any_of(roots.begin(), roots.end(), [&](xcb_window_t root) {
    const bool manages = isWindowManager(connection, root, client);
    const std::vector<xcb_window_t> windows = childrenOf(connection, root);
    return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
      if (!isOf(connection, client, window)) return false;
      const auto shown = shownWindow(connection, window);
      if (!shown) return false;
      if (shown->override_redirect != 0 && saysToBeMenu(connection, window)) return true;
      return manages && isMenuSized(connection, root, window) &&
             !holdsWindowOfAnother(connection, client, window);
    });
  });
}

bool isPopupOfWindow(const Connection& connection, uint32_t window) {
  const auto popup = shownWindow(connection, window);
  if (!popup || popup->override_redirect == 0) return false;
  const xcb_window_t owner = windowIn(connection, window, XCB_ATOM_WM_TRANSIENT_FOR);
  const uint32_t client = window & ~xcb_get_setup(connection.xcb())->resource_id_mask;
  if (owner == XCB_WINDOW_NONE || !isOf(connection, client, owner)) return false;
  const auto ordinary = shownWindow(connection, owner);
  return ordinary && ordinary->override_redirect == 0;
}

}  // namespace zarvy::x11
