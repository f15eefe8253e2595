#include "e2e/harness/XConnection.h"

#include <stdexcept>

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace zarvy::e2e {

XConnection::XConnection(const std::string& display)
    : m_connection(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(m_connection) != 0) {
    xcb_disconnect(m_connection);
    throw std::runtime_error("no connection to display " + display);
  }
  m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
  const auto inputVersion = owned(xcb_input_xi_query_version_reply(
      m_connection, xcb_input_xi_query_version(m_connection, 2, 2), nullptr));
  const auto testVersion = owned(
      xcb_test_get_version_reply(m_connection, xcb_test_get_version(m_connection, 2, 2), nullptr));
  const int hasXkb = xkb_x11_setup_xkb_extension(
      m_connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
      XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
  if (!inputVersion || !testVersion || hasXkb == 0) {
    xcb_disconnect(m_connection);
    throw std::runtime_error("display " + display + " lacks XInput, XTEST or XKB");
  }
}

XConnection::~XConnection() {
  xcb_disconnect(m_connection);
}

xcb_atom_t XConnection::atom(const std::string& name) const {
  const auto cookie =
      xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const auto reply = owned(xcb_intern_atom_reply(m_connection, cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<std::uint32_t> XConnection::property(xcb_window_t window,
                                                 const std::string& name) const {
  constexpr std::uint32_t longestInWords = 1 << 16;
  const auto cookie = xcb_get_property(m_connection, 0, window, atom(name),
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, longestInWords);
  const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* items = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {items, items + reply->value_len};
}

void XConnection::synchronise() const {
  const auto answer =
      owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

}  // namespace zarvy::e2e
