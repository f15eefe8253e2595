#pragma once

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;

// A window that is never shown, to ask the server about and to send events to. Any thread.
class HiddenWindow {
 public:
  explicit HiddenWindow(Connection& connection);
  ~HiddenWindow();
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;

  [[nodiscard]] xcb_window_t id() const { return m_id; }

  // Has the server put a message to this window behind the events that it has made so far. Does not
  // wait.
  void sendMessage() const;

  // Whether `event` is such a message.
  [[nodiscard]] bool isMessage(const xcb_generic_event_t& event) const;

 private:
  Connection& m_connection;
  const xcb_window_t m_id;
};

}  // namespace zarvy::x11
