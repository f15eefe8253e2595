#include "e2e/harness/InputDevices.h"

#include <functional>
#include <stdexcept>
#include <string>

#include <xcb/xinput.h>

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

}  // namespace zarvy::e2e
