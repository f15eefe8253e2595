#include "platform/x11/capture/KeyCapture.h"

#include <utility>

#include <xcb/xinput.h>

#include "platform/SyntheticEvent.h"
#include "platform/x11/capture/OwnPosts.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/keyboard/LiveKeymap.h"

namespace zarvy::x11 {

namespace {

// Up, down, left and right. The event of a button has the form of a key's.
bool isOfWheel(uint32_t button) {
  return button >= XCB_BUTTON_INDEX_4 && button <= 7;
}

}  // namespace

KeyCapture::KeyCapture(Connection& connection, OwnPosts& posts, LiveKeymap& keymap,
                       std::function<bool(xcb_timestamp_t time)> mustNotBeHeard)
    : m_connection(connection),
      m_posts(posts),
      m_keymap(keymap),
      m_mustNotBeHeard(std::move(mustNotBeHeard)),
      m_decoder(keymap.current()) {
  selectEvents();
  m_decoder.setState(KeyboardState::query(m_connection));
}

// Raw events, since they come whatever client has the focus or holds a grab; the state of the
// modifiers on the same connection, so that both arrive in the order in which they happened.
// Keyboards that come and go are told, since autorepeat is listened for on each of them. The focus
// is for GrabWatch: what is listened for at a window is one set, and these are the same windows.
void KeyCapture::selectEvents() {
  const xcb_window_t root = m_connection.root();
  for (const xcb_window_t window : m_connection.roots()) {
    uint32_t mask = XCB_INPUT_XI_EVENT_MASK_FOCUS_IN | XCB_INPUT_XI_EVENT_MASK_FOCUS_OUT;
    if (window == root) {
      mask |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
              XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN;
    }
    selectInputEvents(m_connection, window, XCB_INPUT_DEVICE_ALL_MASTER, mask);
  }
  selectInputEvents(m_connection, root, XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
  selectAutorepeat();

  constexpr uint16_t stateParts = XCB_XKB_STATE_PART_MODIFIER_BASE |
                                  XCB_XKB_STATE_PART_MODIFIER_LATCH |
                                  XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_BASE |
                                  XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;
  xcb_xkb_select_events_details_t details{};
  details.affectState = stateParts;
  details.stateDetails = stateParts;
  xcb_xkb_select_events_aux(m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                            XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
  m_connection.flush();
}

// Autorepeat makes no raw events. It is taken from the events of the single keyboards, which reach
// the root window since applications listen to the union of all keyboards only. Unlike raw events,
// which come once wherever one listens, these go to the screen that has the focus.
void KeyCapture::selectAutorepeat() {
  for (const uint16_t keyboard : HeldKeys(m_connection).physicalKeyboards()) {
    for (const xcb_window_t root : m_connection.roots()) {
      selectInputEvents(m_connection, root, keyboard, XCB_INPUT_XI_EVENT_MASK_KEY_PRESS);
    }
  }
  m_connection.flush();
}

void KeyCapture::handleEvent(const xcb_generic_event_t& event) {
  const uint8_t type = typeOf(event);
  if (type == m_connection.xkbEventBase()) return handleXkbEvent(event);
  if (type != XCB_GE_GENERIC) return;
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != m_connection.xinputOpcode()) return;
  const auto& key = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  if (generic.event_type == XCB_INPUT_RAW_KEY_PRESS) handleRawKey(key, true);
  if (generic.event_type == XCB_INPUT_RAW_KEY_RELEASE) handleRawKey(key, false);
  if (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS && !isOfWheel(key.detail)) {
    m_onPointerPress();
  }
  if (generic.event_type == XCB_INPUT_RAW_TOUCH_BEGIN) m_onPointerPress();
  if (generic.event_type == XCB_INPUT_HIERARCHY) {
    selectAutorepeat();
    m_onKeyboardsChanged();
  }
  if (generic.event_type == XCB_INPUT_KEY_PRESS) {
    handleKeyboardPress(reinterpret_cast<const xcb_input_key_press_event_t&>(event));
  }
}

// This program never holds a key long enough to make it repeat.
void KeyCapture::handleKeyboardPress(const xcb_input_key_press_event_t& event) {
  if (!(event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT)) return;
  handleForeignPress(static_cast<uint8_t>(event.detail), event.time);
}

void KeyCapture::handleRawKey(const xcb_input_raw_key_press_event_t& event, bool press) {
  const auto keycode = static_cast<uint8_t>(event.detail);
  if (m_posts.take(event.full_sequence, keycode, press)) {
    if (!press) return;
    m_onPress({.keyCode = m_keymap.current()->virtualKey(keycode),
               .modifierFlags = 0,
               .charactersIgnoringModifiers = std::nullopt,
               .locationX = syntheticEventMarkerX});
    return;
  }
  m_onForeignKey({.keyboard = event.sourceid,
                  .keycode = keycode,
                  .isPress = press,
                  .sequence = event.full_sequence});
  if (press) handleForeignPress(keycode, event.time);
}

// What must not be heard may begin on another thread while a key is being decoded. That thread has
// what was typed before forgotten, and a key that was told after that is forgotten here.
void KeyCapture::handleForeignPress(uint8_t keycode, xcb_timestamp_t time) {
  if (m_mustNotBeHeard(time)) return tellThatSomethingWasTyped();
  m_onPress(m_decoder.decodePress(keycode));
  if (m_mustNotBeHeard(time)) tellThatSomethingWasTyped();
}

// Not what it was: it is secret here.
void KeyCapture::tellThatSomethingWasTyped() {
  m_decoder.breakOffSequence();
  m_onHiddenPress();
}

// The state is left as it was told by events where the keymap is new: asking for it would run ahead
// of the key events that still wait to be read.
void KeyCapture::handleXkbEvent(const xcb_generic_event_t& event) {
  if (m_keymap.handleEvent(event)) m_decoder.setKeymap(m_keymap.current());
  // Every XKB event has its own type in the byte behind the event's.
  if (event.pad0 != XCB_XKB_STATE_NOTIFY) return;
  m_decoder.setState(
      KeyboardState::of(reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event)));
  m_onStateChange();
}

}  // namespace zarvy::x11
