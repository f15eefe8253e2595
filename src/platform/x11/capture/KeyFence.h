#pragma once

#include <atomic>
#include <cstdint>

#include "platform/x11/connection/HiddenWindow.h"

namespace zarvy::x11 {

// A fence among the key events of the connection. News from elsewhere that a secret has ended does
// not say which keys have been read by then; those that wait to be read were typed before. The
// fence is an event that this object sends to itself: the server puts it behind them.
class KeyFence {
 public:
  explicit KeyFence(Connection& connection) : m_window(connection) {}

  // What has been typed until now is before the fence. Does not wait. Any thread.
  void set();

  // Whether keys that are read now were typed before the latest fence. Any thread.
  [[nodiscard]] bool isAhead() const { return m_passed != m_set; }

  // On the reader's thread, ahead of what reads the keys.
  void handleEvent(const xcb_generic_event_t& event);

 private:
  const HiddenWindow m_window;
  std::atomic<uint32_t> m_set = 0;
  std::atomic<uint32_t> m_passed = 0;
};

}  // namespace zarvy::x11
