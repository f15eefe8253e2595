#include "typing/KeyObserver.h"

#include <stdexcept>

#include <xcb/xinput.h>

#include "e2e/harness/PhysicalKeyboard.h"

namespace zarvy::benchmarks {

using e2e::owned;

namespace {

constexpr std::uint8_t eventTypeMask = 0x7F;  // the top bit says that a client sent the event
constexpr auto patience = std::chrono::seconds(30);

std::uint8_t keyFor(const e2e::XConnection& connection, xkb_keysym_t symbol) {
  const auto stroke = e2e::PhysicalKeyboard(connection).strokeForSymbol(symbol);
  if (!stroke) throw std::runtime_error("the keyboard lacks a key");
  return stroke->key;
}

}  // namespace

KeyObserver::KeyObserver(const std::string& display)
    : m_connection(display),
      m_wakeUpWindow(xcb_generate_id(m_connection.get())),
      m_inputOpcode(xcb_get_extension_data(m_connection.get(), &xcb_input_id)->major_opcode),
      m_backspaceKey(keyFor(m_connection, XKB_KEY_BackSpace)) {
  readModifierKeys();
  xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_wakeUpWindow, m_connection.root(),
                    0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  selectKeys();
  m_connection.synchronise();
  m_reader = std::thread([this] { readEvents(); });
}

// An event that the connection sends to itself ends the reader's wait.
KeyObserver::~KeyObserver() {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = m_wakeUpWindow;
  xcb_send_event(m_connection.get(), 0, m_wakeUpWindow, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(m_connection.get());
  m_reader.join();
}

void KeyObserver::forget() {
  const std::lock_guard lock(m_mutex);
  m_record.clear();
}

KeyRecord KeyObserver::waitFor(const RecordTest& isComplete) {
  std::unique_lock lock(m_mutex);
  m_awaited = &isComplete;
  const bool came = m_completed.wait_for(lock, patience, [&] { return isComplete(m_record); });
  m_awaited = nullptr;
  if (!came) {
    throw std::runtime_error("after " + std::to_string(m_record.size()) +
                             " keys the ones to come are missing");
  }
  return m_record;
}

// Raw events come whoever has the focus and whoever holds a grab.
void KeyObserver::selectKeys() const {
  struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } selection{{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
              XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};
  xcb_input_xi_select_events(m_connection.get(), m_connection.root(), 1, &selection.head);
}

void KeyObserver::readModifierKeys() {
  const auto mapping = owned(xcb_get_modifier_mapping_reply(
      m_connection.get(), xcb_get_modifier_mapping(m_connection.get()), nullptr));
  if (!mapping) throw std::runtime_error("the server does not tell its modifier keys");
  const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(mapping.get());
  const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
  for (int index = 0; index < count; ++index) m_isModifier.at(keys[index]) = true;
}

void KeyObserver::readEvents() {
  for (;;) {
    const auto event = owned(xcb_wait_for_event(m_connection.get()));
    if (!event) return;  // the server has gone
    const auto type = event->response_type & eventTypeMask;
    if (type == XCB_CLIENT_MESSAGE) return;
    if (type == XCB_GE_GENERIC) take(*event);
  }
}

void KeyObserver::take(const xcb_generic_event_t& event) {
  const auto arrival = std::chrono::steady_clock::now();
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != m_inputOpcode || generic.event_type != XCB_INPUT_RAW_KEY_PRESS) return;
  const auto& press = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  const auto keycode = static_cast<std::uint8_t>(press.detail);
  if (m_isModifier.at(keycode)) return;
  const std::lock_guard lock(m_mutex);
  m_record.push_back({.arrival = arrival, .keycode = keycode});
  // One wake-up at the end, and not one a key: it would cost the measured program its time.
  if (m_awaited != nullptr && (*m_awaited)(m_record)) m_completed.notify_all();
}

}  // namespace zarvy::benchmarks
