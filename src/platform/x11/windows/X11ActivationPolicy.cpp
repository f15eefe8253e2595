#include "platform/x11/windows/X11ActivationPolicy.h"

#include <array>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
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
  const auto window = static_cast<xcb_window_t>(nativeWindow);
  const Atoms& atoms = m_connection.atoms();
  sendToWindowManager(
      m_connection, m_properties.rootOf(window),
      {.window = window,
       .type = atoms.netWmState,
       .data = {m_kind == Kind::accessory ? addState : removeState, atoms.netWmStateSkipTaskbar,
                atoms.netWmStateSkipPager, sourceApplication}});
  m_connection.flush();
}

}  // namespace zarvy::x11
