#include "platform/x11/connection/Atoms.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

Atoms Atoms::intern(xcb_connection_t* xcb) {
  using Row = std::pair<xcb_atom_t Atoms::*, std::string_view>;
  static constexpr std::array rows{
      Row{&Atoms::netActiveWindow, "_NET_ACTIVE_WINDOW"},
      Row{&Atoms::netClientList, "_NET_CLIENT_LIST"},
      Row{&Atoms::netSupported, "_NET_SUPPORTED"},
      Row{&Atoms::netSupportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
      Row{&Atoms::netWmName, "_NET_WM_NAME"},
      Row{&Atoms::netWmPid, "_NET_WM_PID"},
      Row{&Atoms::netWmPing, "_NET_WM_PING"},
      Row{&Atoms::netWmState, "_NET_WM_STATE"},
      Row{&Atoms::netWmStateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
      Row{&Atoms::netWmStateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
      Row{&Atoms::netWmWindowType, "_NET_WM_WINDOW_TYPE"},
      Row{&Atoms::netWmWindowTypeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
      Row{&Atoms::netWmWindowTypeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
      Row{&Atoms::netWmWindowTypeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
      Row{&Atoms::netWmWindowTypePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
      Row{&Atoms::utf8String, "UTF8_STRING"},
      Row{&Atoms::wmProtocols, "WM_PROTOCOLS"},
      Row{&Atoms::ximServers, "XIM_SERVERS"},
      Row{&Atoms::zarvyScratchKeys, "_ZARVY_SPARE_KEYS"},
      Row{&Atoms::zarvyTypesOn, "_ZARVY_TYPES_ON"},
  };
  std::array<xcb_intern_atom_cookie_t, rows.size()> cookies{};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    cookies[i] = xcb_intern_atom(xcb, 0, static_cast<uint16_t>(rows[i].second.size()),
                                 rows[i].second.data());
  }
  Atoms atoms;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb, cookies[i], nullptr));
    if (reply) atoms.*rows[i].first = reply->atom;
  }
  return atoms;
}

xcb_atom_t internAtom(xcb_connection_t* xcb, std::string_view name) {
  const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      xcb, xcb_intern_atom(xcb, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr));
  if (!reply) return XCB_ATOM_NONE;
  return reply->atom;
}

}  // namespace zarvy::x11
