#pragma once

#include <cstdint>

namespace zarvy::x11 {

class Connection;
class OwnPosts;

// Fakes key presses and releases through XTEST and puts each on record as this program's own. The
// events are buffered until flush(). Any thread; whoever posts a run that must not be torn keeps
// others out by a lock of their own.
class KeySender {
 public:
  KeySender(Connection& connection, OwnPosts& posts) : m_connection(connection), m_posts(posts) {}

  void press(uint8_t keycode) { post(keycode, true); }
  void release(uint8_t keycode) { post(keycode, false); }
  void tap(uint8_t keycode);
  void flush();

 private:
  void post(uint8_t keycode, bool press);

  Connection& m_connection;
  OwnPosts& m_posts;
};

}  // namespace zarvy::x11
