#pragma once

#include <string_view>

#include <xcb/xcb.h>

namespace zarvy::x11 {

// The atoms that the adapters use, interned once for a connection.
struct Atoms {
  xcb_atom_t netActiveWindow = XCB_ATOM_NONE;
  xcb_atom_t netClientList = XCB_ATOM_NONE;
  xcb_atom_t netSupported = XCB_ATOM_NONE;
  xcb_atom_t netSupportingWmCheck = XCB_ATOM_NONE;
  xcb_atom_t netWmName = XCB_ATOM_NONE;
  xcb_atom_t netWmPid = XCB_ATOM_NONE;
  xcb_atom_t netWmPing = XCB_ATOM_NONE;
  xcb_atom_t netWmState = XCB_ATOM_NONE;
  xcb_atom_t netWmStateSkipPager = XCB_ATOM_NONE;
  xcb_atom_t netWmStateSkipTaskbar = XCB_ATOM_NONE;
  xcb_atom_t netWmWindowType = XCB_ATOM_NONE;
  xcb_atom_t netWmWindowTypeCombo = XCB_ATOM_NONE;
  xcb_atom_t netWmWindowTypeDropdownMenu = XCB_ATOM_NONE;
  xcb_atom_t netWmWindowTypeMenu = XCB_ATOM_NONE;
  xcb_atom_t netWmWindowTypePopupMenu = XCB_ATOM_NONE;
  xcb_atom_t utf8String = XCB_ATOM_NONE;
  xcb_atom_t wmProtocols = XCB_ATOM_NONE;
  xcb_atom_t ximServers = XCB_ATOM_NONE;
  xcb_atom_t zarvyScratchKeys = XCB_ATOM_NONE;
  xcb_atom_t zarvyTypesOn = XCB_ATOM_NONE;

  [[nodiscard]] static Atoms intern(xcb_connection_t* xcb);
};

// One that is used now and then.
[[nodiscard]] xcb_atom_t internAtom(xcb_connection_t* xcb, std::string_view name);

}  // namespace zarvy::x11
