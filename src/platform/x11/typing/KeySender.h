#pragma once

#include <cstdint>

#include "platform/x11/capture/OwnPosts.h"

namespace zarvy::x11 {

class Connection;

// Fakes key presses and releases through XTEST and puts each on record as this program's own. The
// events are buffered until flush(). Any thread; a caller that posts a run that must not be torn
// keeps other threads out by a lock of its own.
//
// A key is faked on the keyboard that is named, by its XInput number, as if it were pressed there:
// on the keyboard that the user types on. On XTEST's own one it would make the server give every
// application another keyboard's keymap and state, and back again at the user's next key.
class KeySender {
 public:
  KeySender(Connection& connection, OwnPosts& posts) : m_connection(connection), m_posts(posts) {}

  // These return the sequence number of their last request.
  uint32_t press(uint16_t keyboard, uint8_t keycode) { return post(keyboard, keycode, true); }
  uint32_t release(uint16_t keyboard, uint8_t keycode) { return post(keyboard, keycode, false); }
  uint32_t tap(uint16_t keyboard, uint8_t keycode);

  void flush();

  // Waits, for a bounded time, until the server has carried out all that was posted.
  void awaitPosted() { m_posts.awaitEvents(); }

 private:
  uint32_t post(uint16_t keyboard, uint8_t keycode, bool press);

  Connection& m_connection;
  OwnPosts& m_posts;
};

}  // namespace zarvy::x11
