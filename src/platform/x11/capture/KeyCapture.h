#pragma once

#include <functional>
#include <memory>

#include <xcb/xcb.h>

#include "platform/KeyEventSource.h"
#include "platform/x11/capture/KeyDecoder.h"

struct xcb_input_key_press_event_t;
struct xcb_input_raw_key_press_event_t;

namespace zarvy::x11 {

class Connection;
class LiveKeymap;
class OwnPosts;

// Follows the keyboard on the reader's thread: keymap, state, and every key that goes down or up
// anywhere on the display.
class KeyCapture {
 public:
  using PressHandler = std::function<void(const KeyEvent&)>;

  // `keymap` is that of the union of all keyboards. `mustNotBeHeard` says whether a key that went
  // down at that time of the server is secret; it is asked on the reader's thread
  // for each of them.
  KeyCapture(Connection& connection, OwnPosts& posts, LiveKeymap& keymap,
             std::function<bool(xcb_timestamp_t time)> mustNotBeHeard);

  // From now on `handler` gets every key-down, this program's own ones with the marker's x. On the
  // reader's thread. Before the reader starts.
  void onPress(PressHandler handler) { m_onPress = std::move(handler); }

  // Called on the reader's thread for each key-down that is secret.
  void onHiddenPress(std::function<void()> handler) { m_onHiddenPress = std::move(handler); }

  // Called on the reader's thread for each press of the pointer that may move the caret: of a
  // button that does not scroll, and of a finger. In its order among the keys.
  void onPointerPress(std::function<void()> handler) { m_onPointerPress = std::move(handler); }

  // Called on the reader's thread for each modifier or layout that changes.
  void onStateChange(std::function<void()> handler) { m_onStateChange = std::move(handler); }

  // A key that this program did not press or release, on the keyboard with that XInput number. The
  // server had carried out this program's request of number `sequence`, and none behind it.
  struct ForeignKey {
    uint16_t keyboard = 0;
    uint8_t keycode = 0;
    bool isPress = false;
    uint32_t sequence = 0;
  };

  // Called on the reader's thread for each of them, ahead of the handler of presses.
  void onForeignKey(std::function<void(const ForeignKey&)> handler) {
    m_onForeignKey = std::move(handler);
  }

  // Called on the reader's thread when a keyboard has come or gone.
  void onKeyboardsChanged(std::function<void()> handler) {
    m_onKeyboardsChanged = std::move(handler);
  }

  // On the reader's thread.
  void handleEvent(const xcb_generic_event_t& event);

 private:
  void selectEvents();
  void selectAutorepeat();
  void handleKeyboardPress(const xcb_input_key_press_event_t& event);
  void handleRawKey(const xcb_input_raw_key_press_event_t& event, bool press);
  void handleForeignPress(uint8_t keycode, xcb_timestamp_t time);
  void tellThatSomethingWasTyped();
  void handleXkbEvent(const xcb_generic_event_t& event);

  Connection& m_connection;
  OwnPosts& m_posts;
  LiveKeymap& m_keymap;
  const std::function<bool(xcb_timestamp_t time)> m_mustNotBeHeard;
  KeyDecoder m_decoder;
  PressHandler m_onPress;
  std::function<void()> m_onHiddenPress;
  std::function<void()> m_onPointerPress;
  std::function<void()> m_onStateChange;
  std::function<void(const ForeignKey&)> m_onForeignKey;
  std::function<void()> m_onKeyboardsChanged;
};

}  // namespace zarvy::x11
