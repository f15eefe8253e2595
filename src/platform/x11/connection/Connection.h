#pragma once

#include <memory>
#include <vector>

#include <QString>

#include <xcb/xcb.h>

#include "platform/x11/connection/Atoms.h"

namespace zarvy::x11 {

// The one connection to the X server that hears and posts keys. Both must share it: an event that a
// posted key causes carries the sequence number of the request that posted it.
//
// libxcb is thread-safe, and so is everything here. Requests may be made on any thread; events are
// taken by EventReader alone.
class Connection {
 public:
  // Connects to the display that the environment names and asks for XInput 2.2, XTEST and XKB.
  // Null where one of these is missing; `reason` then says which, in one line for the user.
  [[nodiscard]] static std::unique_ptr<Connection> open(QString* reason);

  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb; }

  // The root window of the screen that the environment names, and those of all screens. Few
  // displays have more than one; they share keyboard, pointer and input focus.
  [[nodiscard]] xcb_window_t root() const { return m_root; }
  [[nodiscard]] const std::vector<xcb_window_t>& roots() const { return m_roots; }

  [[nodiscard]] const Atoms& atoms() const { return m_atoms; }
  [[nodiscard]] uint8_t xinputOpcode() const { return m_xinputOpcode; }
  [[nodiscard]] uint8_t xinputEventBase() const { return m_xinputEventBase; }
  [[nodiscard]] uint8_t xkbEventBase() const { return m_xkbEventBase; }
  [[nodiscard]] int32_t coreKeyboard() const { return m_coreKeyboard; }

  // False once the server is gone; every request is then a no-op and every reply null.
  [[nodiscard]] bool isAlive() const;

  // Sends what is still buffered.
  void flush() const;

  // Returns once the server has carried out every request made so far.
  void synchronize() const;

 private:
  Connection() = default;
  [[nodiscard]] bool requireExtensions(QString* reason);

  xcb_connection_t* m_xcb = nullptr;
  xcb_window_t m_root = XCB_WINDOW_NONE;
  std::vector<xcb_window_t> m_roots;
  Atoms m_atoms;
  uint8_t m_xinputOpcode = 0;
  uint8_t m_xinputEventBase = 0;
  uint8_t m_xkbEventBase = 0;
  int32_t m_coreKeyboard = -1;
};

}  // namespace zarvy::x11
