#include "platform/x11/windows/X11ActivationPolicy.h"

#include <array>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

namespace {

// The actions and the source of a _NET_WM_STATE message.
constexpr uint32_t removeState = 0;
constexpr uint32_t addState = 1;
constexpr uint32_t sourceApplication = 1;

}  // namespace

void X11ActivationPolicy::setActivationPolicy(Kind kind) {
  m_kind = kind;
  for (const quint64 window : m_windows) ask(window);
}

// Written by the program itself, since no window manager knows the window yet; the toolkit leaves
// in place what it finds. Waits until it is there: the toolkit speaks on another connection.
void X11ActivationPolicy::leaveOut(quint64 nativeWindow) {
  m_leftOut.insert(nativeWindow);
  const Atoms& atoms = m_connection.atoms();
  const std::array states{atoms.netWmStateSkipTaskbar, atoms.netWmStateSkipPager};
  xcb_connection_t* const xcb = m_connection.xcb();
  const XcbPtr<xcb_generic_error_t> error(xcb_request_check(
      xcb, xcb_change_property_checked(xcb, XCB_PROP_MODE_APPEND,
                                       static_cast<xcb_window_t>(nativeWindow), atoms.netWmState,
                                       XCB_ATOM_ATOM, 32, states.size(), states.data())));
}

void X11ActivationPolicy::windowOpened(quint64 nativeWindow) {
  if (m_windows.contains(nativeWindow) || m_leftOut.contains(nativeWindow)) return;
  m_windows.insert(nativeWindow);
  if (m_kind == Kind::accessory) ask(nativeWindow);
}

void X11ActivationPolicy::windowClosed(quint64 nativeWindow) {
  m_windows.remove(nativeWindow);
  m_leftOut.remove(nativeWindow);
}

void X11ActivationPolicy::ask(quint64 nativeWindow) const {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = static_cast<xcb_window_t>(nativeWindow);
  message.type = m_connection.atoms().netWmState;
  message.data.data32[0] = m_kind == Kind::accessory ? addState : removeState;
  message.data.data32[1] = m_connection.atoms().netWmStateSkipTaskbar;
  message.data.data32[2] = m_connection.atoms().netWmStateSkipPager;
  message.data.data32[3] = sourceApplication;
  xcb_send_event(m_connection.xcb(), 0, m_properties.rootOf(message.window),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&message));
  m_connection.flush();
}

}  // namespace zarvy::x11
