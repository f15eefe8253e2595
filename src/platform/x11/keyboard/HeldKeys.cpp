#include "platform/x11/keyboard/HeldKeys.h"

#include <span>
#include <string_view>

#include <xcb/xinput.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

namespace {

bool isFakeKeyboard(const xcb_input_xi_device_info_t& device) {
  const std::string_view name(
      xcb_input_xi_device_info_name(&device),
      static_cast<std::size_t>(xcb_input_xi_device_info_name_length(&device)));
  return name.find("XTEST keyboard") != std::string_view::npos;
}

}  // namespace

std::vector<HeldKeys::Keyboard> HeldKeys::keyboards() const {
  std::vector<Keyboard> found;
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
      xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
  if (!reply) return found;
  for (auto devices = xcb_input_xi_query_device_infos_iterator(reply.get()); devices.rem > 0;
       xcb_input_xi_device_info_next(&devices)) {
    const xcb_input_xi_device_info_t& device = *devices.data;
    if (device.type != XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD) continue;
    found.push_back({.device = device.deviceid,
                     .unionOfKeyboards = device.attachment,
                     .isFake = isFakeKeyboard(device)});
  }
  return found;
}

std::vector<uint16_t> HeldKeys::allKeyboards() const {
  std::vector<uint16_t> found;
  for (const Keyboard& keyboard : keyboards()) found.push_back(keyboard.device);
  return found;
}

std::vector<uint16_t> HeldKeys::physicalKeyboards() const {
  std::vector<uint16_t> found;
  for (const Keyboard& keyboard : keyboards()) {
    if (!keyboard.isFake) found.push_back(keyboard.device);
  }
  return found;
}

std::optional<uint16_t> HeldKeys::ownFakeKeyboard() const {
  for (const Keyboard& keyboard : keyboards()) {
    if (keyboard.isFake && keyboard.unionOfKeyboards == m_connection.coreKeyboard()) {
      return keyboard.device;
    }
  }
  return std::nullopt;
}

// The answer is a list of input classes, each with its number and its length in bytes ahead.
KeycodeSet HeldKeys::on(uint16_t keyboard) const {
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_input_query_device_state_reply_t> reply(xcb_input_query_device_state_reply(
      xcb, xcb_input_query_device_state(xcb, static_cast<uint8_t>(keyboard)), nullptr));
  if (!reply) return {};
  const auto* bytes = reinterpret_cast<const uint8_t*>(reply.get() + 1);
  std::span<const uint8_t> rest(bytes, std::size_t{4} * reply->length);
  for (int i = 0; i < reply->num_classes && rest.size() >= 2; ++i) {
    const uint8_t inputClass = rest[0];
    const std::size_t length = rest[1];
    if (length < 2 || length > rest.size()) break;
    constexpr std::size_t keysOffset = 4;
    if (inputClass == XCB_INPUT_INPUT_CLASS_KEY && length > keysOffset) {
      return keycodesOfBits(rest.subspan(keysOffset, length - keysOffset));
    }
    rest = rest.subspan(length);
  }
  return {};
}

}  // namespace zarvy::x11
