#pragma once

#include <string>

#include <xcb/xcb.h>

#include "e2e/harness/XConnection.h"

namespace zarvy::x11 {

// A window that no window manager has to do with.
class BareWindow {
 public:
  explicit BareWindow(const e2e::XConnection& connection, bool isUnmanaged = true)
      : m_connection(connection), m_window(xcb_generate_id(connection.get())) {
    const uint32_t overrideRedirect = isUnmanaged ? 1 : 0;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0, 10,
                      10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(connection.get(), m_window);
    connection.synchronise();
  }
  ~BareWindow() {
    xcb_destroy_window(m_connection.get(), m_window);
    m_connection.synchronise();
  }
  BareWindow(const BareWindow&) = delete;
  BareWindow& operator=(const BareWindow&) = delete;

  [[nodiscard]] xcb_window_t id() const { return m_window; }

  void unmap() {
    xcb_unmap_window(m_connection.get(), m_window);
    m_connection.synchronise();
  }

  // Has it say of itself what it is, as _NET_WM_WINDOW_TYPE_... does.
  void setType(const std::string& type) {
    const xcb_atom_t value = m_connection.atom("_NET_WM_WINDOW_TYPE_" + type);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &value);
    m_connection.synchronise();
  }

  // Has it say that it belongs to `owner`.
  void setOwner(const BareWindow& owner) {
    const xcb_window_t value = owner.id();
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window,
                        XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1, &value);
    m_connection.synchronise();
  }

  void focus() {
    xcb_set_input_focus(m_connection.get(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
    m_connection.synchronise();
  }

 private:
  const e2e::XConnection& m_connection;
  xcb_window_t m_window;
};

}  // namespace zarvy::x11
