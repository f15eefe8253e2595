#include "e2e/harness/InputDevices.h"

#include <functional>
#include <stdexcept>
#include <string>

#include <xcb/xinput.h>

#include "e2e/harness/Xkb.h"

namespace zarvy::e2e {

namespace {

using DeviceVisitor = std::function<void(const xcb_input_xi_device_info_t&, const std::string&)>;

void visitDevices(const XConnection& connection, const DeviceVisitor& visitor) {
  const auto devices = owned(xcb_input_xi_query_device_reply(
      connection.get(), xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL),
      nullptr));
  if (!devices) throw std::runtime_error("the server does not list its devices");
  for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
       xcb_input_xi_device_info_next(&device)) {
    visitor(*device.data, {xcb_input_xi_device_info_name(device.data), device.data->name_len});
  }
}

void addKeys(const xcb_input_key_state_t& state, std::set<std::uint8_t>& keys) {
  for (unsigned code = 0; code < 256; ++code) {
    const unsigned bits = state.keys[code / 8];
    if ((bits >> (code % 8)) & 1U) keys.insert(static_cast<std::uint8_t>(code));
  }
}

}  // namespace

std::vector<std::uint16_t> keyboardIds(const XConnection& connection) {
  std::vector<std::uint16_t> ids;
  visitDevices(connection, [&](const xcb_input_xi_device_info_t& device, const std::string&) {
    if (device.type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD ||
        device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD) {
      ids.push_back(device.deviceid);
    }
  });
  return ids;
}

std::uint16_t serverKeyboardId(const XConnection& connection) {
  std::optional<std::uint16_t> id;
  visitDevices(connection, [&](const xcb_input_xi_device_info_t& device, const std::string& name) {
    if (device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
        name.find("XTEST") == std::string::npos) {
      id = device.deviceid;
    }
  });
  if (!id) throw std::runtime_error("the server has no keyboard of its own");
  return *id;
}

std::set<std::uint8_t> heldKeys(const XConnection& connection) {
  std::set<std::uint8_t> held;
  for (const std::uint16_t keyboard : keyboardIds(connection)) {
    const auto state = owned(xcb_input_query_device_state_reply(
        connection.get(),
        xcb_input_query_device_state(connection.get(), static_cast<std::uint8_t>(keyboard)),
        nullptr));
    if (!state) continue;  // unplugged meanwhile
    for (auto inputClass = xcb_input_query_device_state_classes_iterator(state.get());
         inputClass.rem > 0; xcb_input_input_state_next(&inputClass)) {
      if (inputClass.data->class_id != XCB_INPUT_INPUT_CLASS_KEY) continue;
      addKeys(*reinterpret_cast<const xcb_input_key_state_t*>(inputClass.data), held);
    }
  }
  return held;
}

void delayKeyRepeat(const XConnection& connection) {
  constexpr std::uint16_t delay = 3000;  // milliseconds, as the next
  constexpr std::uint16_t interval = 200;
  const std::uint8_t keysThatRepeat[32] = {};  // not changed
  xcb_xkb_set_controls(connection.get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                       0, 0, XCB_XKB_BOOL_CTRL_REPEAT_KEYS, delay, interval, 0, 0, 0, 0, 0, 0, 0, 0,
                       0, 0, 0, 0, keysThatRepeat);
  connection.synchronise();
}

}  // namespace zarvy::e2e
