#include "platform/x11/capture/X11HotKeys.h"

#include <algorithm>
#include <set>

#include <xcb/xinput.h>

#include "platform/ModifierFlags.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/keyboard/LiveKeymap.h"

namespace zarvy::x11 {

namespace {

constexpr uint32_t lowestBit(uint32_t mask) {
  return mask & (~mask + 1);
}

// The key with each of the locks that may be on: a program that keeps a key for itself keeps all of
// these, or those that it knows of. Empty where the keyboard has no such modifier.
std::vector<uint16_t> masksOf(quint64 flags, const ModifierKeys& keys) {
  uint32_t mask = 0;
  if (flags & modifier::shift) mask |= keys.shift;
  if (flags & modifier::control) mask |= keys.control;
  if (flags & modifier::option) mask |= lowestBit(keys.option);
  if (flags & modifier::command) mask |= lowestBit(keys.command);
  const bool lacksOne = ((flags & modifier::option) && keys.option == 0) ||
                        ((flags & modifier::command) && keys.command == 0);
  if (lacksOne) return {};
  const std::set<uint32_t> masks{mask, mask | keys.lock, mask | keys.numLock,
                                 mask | keys.lock | keys.numLock};
  return {masks.begin(), masks.end()};
}

std::vector<uint8_t> keycodesOf(quint16 virtualKey, const KeymapSnapshot& keymap) {
  constexpr int lowestKeycode = 8;
  constexpr int highestKeycode = 255;
  std::vector<uint8_t> keycodes;
  for (int keycode = lowestKeycode; keycode <= highestKeycode; ++keycode) {
    const auto code = static_cast<uint8_t>(keycode);
    if (keymap.virtualKey(code) == virtualKey && keymap.hasSymbols(code)) keycodes.push_back(code);
  }
  return keycodes;
}

}  // namespace

bool X11HotKeys::isTakenByAnother(const HotKey& key) const {
  const auto keymap = m_keymap.current();
  const std::vector<uint16_t> masks = masksOf(key.modifiers, keymap->modifiers());
  if (masks.empty()) return false;
  for (const uint8_t keycode : keycodesOf(key.keyCode, *keymap)) {
    for (const xcb_window_t root : m_connection.roots()) {
      if (isTaken(root, keycode, masks) || isTakenThroughXInput(root, keycode, masks)) return true;
    }
  }
  return false;
}

bool X11HotKeys::isTaken(xcb_window_t root, uint8_t keycode,
                         const std::vector<uint16_t>& masks) const {
  xcb_connection_t* const xcb = m_connection.xcb();
  std::vector<xcb_void_cookie_t> questions;
  for (const uint16_t mask : masks) {
    questions.push_back(xcb_grab_key_checked(xcb, 0, root, mask, keycode, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC));
    xcb_ungrab_key(xcb, keycode, root, mask);
  }
  bool isRefused = false;
  for (const xcb_void_cookie_t question : questions) {
    const XcbPtr<xcb_generic_error_t> error(xcb_request_check(xcb, question));
    isRefused = isRefused || (error && error->error_code == XCB_ACCESS);
  }
  return isRefused;
}

// Grabs of this kind and of the other are not in each other's way.
bool X11HotKeys::isTakenThroughXInput(xcb_window_t root, uint8_t keycode,
                                      const std::vector<uint16_t>& masks) const {
  xcb_connection_t* const xcb = m_connection.xcb();
  const std::vector<uint32_t> modifiers(masks.begin(), masks.end());
  const auto count = static_cast<uint16_t>(modifiers.size());
  const auto question = xcb_input_xi_passive_grab_device(
      xcb, XCB_CURRENT_TIME, root, XCB_CURSOR_NONE, keycode, XCB_INPUT_DEVICE_ALL_MASTER, count, 0,
      XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC, 0, nullptr,
      modifiers.data());
  xcb_input_xi_passive_ungrab_device(xcb, root, keycode, XCB_INPUT_DEVICE_ALL_MASTER, count,
                                     XCB_INPUT_GRAB_TYPE_KEYCODE, modifiers.data());
  const XcbPtr<xcb_input_xi_passive_grab_device_reply_t> refused(
      xcb_input_xi_passive_grab_device_reply(xcb, question, nullptr));
  return refused && refused->num_modifiers > 0;
}

}  // namespace zarvy::x11
