#include "platform/x11/typing/KeySender.h"

#include <xcb/xtest.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/hearing/OwnPosts.h"

namespace zarvy::x11 {

void KeySender::tap(uint8_t keycode) {
  press(keycode);
  release(keycode);
}

void KeySender::flush() {
  m_connection.flush();
}

void KeySender::post(uint8_t keycode, bool press) {
  const auto lock = m_posts.lockForPosting();
  const xcb_void_cookie_t cookie =
      xcb_test_fake_input(m_connection.xcb(), press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode,
                          XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  m_posts.record(cookie.sequence, keycode, press);
}

}  // namespace zarvy::x11
