#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;

// Knows whether somebody holds the keyboard for themselves: a password prompt, a screen locker, a
// menu, a window manager's own key. What is typed then goes to nobody else, and raw key events tell
// of it all the same.
//
// The server tells of a grab only as a change of focus away from the window that has it, so that
// one is followed. A grab by that very window, or one that is older than this object, goes
// unnoticed.
class GrabWatch {
 public:
  explicit GrabWatch(Connection& connection);

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

  // Any thread.
  [[nodiscard]] bool isGrabbed() const { return m_grabbedAt.load() != notGrabbed; }

  // For how long by now; nothing where it is not grabbed. Any thread.
  [[nodiscard]] std::chrono::steady_clock::duration grabbedFor() const;

 private:
  using Instant = std::chrono::steady_clock::time_point;
  static constexpr Instant notGrabbed{};

  void handleFocusChange(uint8_t mode, bool into);
  void followFocus();
  [[nodiscard]] xcb_window_t focusedWindow() const;

  Connection& m_connection;
  xcb_window_t m_window = XCB_WINDOW_NONE;  // the one that is listened to
  std::atomic<Instant> m_grabbedAt = notGrabbed;
};

}  // namespace zarvy::x11
