#pragma once

#include <optional>

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;

// Asks the server whether another client holds the keyboard for itself, and changes nothing by
// that: the keyboard is asked for on behalf of a window that is never shown. The server looks first
// whether somebody has the keyboard and then whether the window is to be seen, and refuses it in
// either case. Any thread.
class GrabProbe {
 public:
  explicit GrabProbe(Connection& connection);
  ~GrabProbe();
  GrabProbe(const GrabProbe&) = delete;
  GrabProbe& operator=(const GrabProbe&) = delete;

  // Waits for the answer. Absent where the server has gone.
  [[nodiscard]] std::optional<bool> isGrabbedByAnother() const;

 private:
  Connection& m_connection;
  const xcb_window_t m_window;
};

}  // namespace zarvy::x11
