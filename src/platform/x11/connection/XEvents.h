#pragma once

#include <array>
#include <cstdint>

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;

// The type of an event. The top bit says that another client sent it.
[[nodiscard]] inline uint8_t typeOf(const xcb_generic_event_t& event) {
  return event.response_type & 0x7f;
}

// Whether one request came before another, by their sequence numbers, which wrap around.
[[nodiscard]] inline bool isBefore(uint32_t left, uint32_t right) {
  return static_cast<int32_t>(left - right) < 0;
}

// Has the server tell of these XInput events of `device` at `window`, a mask of
// XCB_INPUT_XI_EVENT_MASK_*; they take the place of those selected there before. Any thread.
void selectInputEvents(Connection& connection, xcb_window_t window, uint16_t device, uint32_t mask);

// What a client message holds. Its format is 32 bits.
struct ClientMessage {
  xcb_window_t window = XCB_WINDOW_NONE;
  xcb_atom_t type = XCB_ATOM_NONE;
  std::array<uint32_t, 5> data = {};
};

// Sends it to the client that has made the window, and does not flush. Any thread.
void sendToOwner(Connection& connection, const ClientMessage& message);

// Sends it to the window manager of the screen of that root window, likewise.
void sendToWindowManager(Connection& connection, xcb_window_t root, const ClientMessage& message);

}  // namespace zarvy::x11
