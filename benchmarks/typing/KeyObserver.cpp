#include "typing/KeyObserver.h"

#include <stdexcept>

#include <xcb/xinput.h>

#include "e2e/harness/PhysicalKeyboard.h"

namespace zarvy::benchmarks {

using e2e::owned;

namespace {

constexpr auto patience = std::chrono::seconds(30);

std::uint8_t keyFor(const e2e::XConnection& connection, xkb_keysym_t symbol) {
  const auto stroke = e2e::PhysicalKeyboard(connection).strokeForSymbol(symbol);
  if (!stroke) throw std::runtime_error("the keyboard lacks a key");
  return stroke->key;
}

}  // namespace

KeyObserver::KeyObserver(const std::string& display)
    : m_reader(display),
      m_inputOpcode(xcb_get_extension_data(connection().get(), &xcb_input_id)->major_opcode),
      m_backspaceKey(keyFor(connection(), XKB_KEY_BackSpace)) {
  readModifierKeys();
  selectKeys();
  m_reader.start([this](const xcb_generic_event_t& event, auto arrival) {
    if (typeOf(event) == XCB_GE_GENERIC) take(event, arrival);
  });
}

KeyObserver::~KeyObserver() {
  m_reader.stop();
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
  xcb_input_xi_select_events(connection().get(), connection().root(), 1, &selection.head);
}

void KeyObserver::readModifierKeys() {
  const auto mapping = owned(xcb_get_modifier_mapping_reply(
      connection().get(), xcb_get_modifier_mapping(connection().get()), nullptr));
  if (!mapping) throw std::runtime_error("the server does not tell its modifier keys");
  const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(mapping.get());
  const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
  for (int index = 0; index < count; ++index) m_isModifier.at(keys[index]) = true;
}

void KeyObserver::take(const xcb_generic_event_t& event,
                       std::chrono::steady_clock::time_point arrival) {
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
