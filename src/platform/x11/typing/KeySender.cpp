#include "platform/x11/typing/KeySender.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include "platform/x11/capture/OwnPosts.h"
#include "platform/x11/connection/Connection.h"

namespace zarvy::x11 {

uint32_t KeySender::tap(uint16_t keyboard, uint8_t keycode) {
  press(keyboard, keycode);
  return release(keyboard, keycode);
}

void KeySender::flush() {
  m_connection.flush();
}

// The type of the event of a single keyboard, as the first version of XInput numbers it: that makes
// XTEST fake it there.
uint32_t KeySender::post(uint16_t keyboard, uint8_t keycode, bool press) {
  const int type = m_connection.xinputEventBase() +
                   (press ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE);
  const auto lock = m_posts.lockForPosting();
  const xcb_void_cookie_t cookie =
      xcb_test_fake_input(m_connection.xcb(), static_cast<uint8_t>(type), keycode, XCB_CURRENT_TIME,
                          XCB_WINDOW_NONE, 0, 0, static_cast<uint8_t>(keyboard));
  m_posts.record(cookie.sequence, keycode, press);
  return cookie.sequence;
}

}  // namespace zarvy::x11
