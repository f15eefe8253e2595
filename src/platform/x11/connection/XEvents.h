#pragma once

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

}  // namespace zarvy::x11
