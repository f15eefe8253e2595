#include "platform/x11/TypingWitness.h"

#include <stdexcept>

#include <xkbcommon/xkbcommon-x11.h>

#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/Xkb.h"

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Control, Alt and Super, as every layout of these tests binds them.
constexpr uint16_t shortcutModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

}  // namespace

TypingWitness::TypingWitness(const std::string& display)
    : m_connection(display), m_context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)) {
  xcb_connection_t* xcb = m_connection.get();
  xkb_x11_setup_xkb_extension(xcb, 1, 0, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
                              &m_xkbEventBase, nullptr);
  constexpr uint16_t events =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, 0xff, 0xff, nullptr);
  reloadKeymap();

  const xcb_window_t window = xcb_generate_id(xcb);
  const uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, m_connection.root(), 0, 0, 100, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  xcb_map_window(xcb, window);
  const bool focused = e2e::waitUntil(
      [&] {
        xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        const auto focus =
            e2e::owned(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
        return focus && focus->focus == window;
      },
      5000ms);
  if (!focused) throw std::runtime_error("the witness got no focus");
}

TypingWitness::~TypingWitness() {
  xkb_state_unref(m_state);
  xkb_keymap_unref(m_keymap);
  xkb_context_unref(m_context);
}

QString TypingWitness::text() {
  readEvents();
  return m_text;
}

int TypingWitness::mappingChanges() {
  readEvents();
  return m_mappingChanges;
}

void TypingWitness::readEvents() {
  m_connection.synchronise();
  while (const auto event = e2e::owned(xcb_poll_for_queued_event(m_connection.get()))) {
    handle(*event);
  }
}

void TypingWitness::handle(const xcb_generic_event_t& event) {
  const uint8_t type = event.response_type & 0x7f;
  if (type == m_xkbEventBase) {
    ++m_mappingChanges;
    reloadKeymap();
  } else if (type == XCB_KEY_PRESS) {
    handleKey(reinterpret_cast<const xcb_key_press_event_t&>(event));
  }
}

void TypingWitness::handleKey(const xcb_key_press_event_t& event) {
  xkb_state_update_mask(m_state, event.state & 0xffU, 0, 0, 0, 0, (event.state >> 13) & 3U);
  const xkb_keysym_t symbol = xkb_state_key_get_one_sym(m_state, event.detail);
  const bool isShortcut = (event.state & shortcutModifiers) != 0;
  if (symbol == XKB_KEY_BackSpace && !isShortcut) {
    m_text.chop(1);
    return;
  }
  const char32_t character = xkb_keysym_to_utf32(symbol);
  if (character == 0 || character == U'\x1b') return;
  const QString text = QString::fromUcs4(&character, 1);
  m_text += isShortcut ? u"<"_s + text + u">"_s : text;
}

void TypingWitness::reloadKeymap() {
  xkb_state_unref(m_state);
  xkb_keymap_unref(m_keymap);
  xcb_connection_t* xcb = m_connection.get();
  m_keymap = xkb_x11_keymap_new_from_device(
      m_context, xcb, xkb_x11_get_core_keyboard_device_id(xcb), XKB_KEYMAP_COMPILE_NO_FLAGS);
  m_state = xkb_state_new(m_keymap);
}

}  // namespace zarvy::x11
