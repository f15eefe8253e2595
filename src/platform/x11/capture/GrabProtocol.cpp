#include "platform/x11/capture/GrabProtocol.h"

#include <cstring>
#include <utility>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace zarvy::x11 {

namespace {

using Bytes = std::span<const std::byte>;
using Kind = GrabChange::Kind;
using Protocol = GrabChange::Protocol;

constexpr std::size_t unitSize = 4;
constexpr std::size_t smallestReply = 32;

// Absent where `bytes` has too few of them.
template <typename Message>
std::optional<Message> messageIn(Bytes bytes) {
  if (bytes.size() < sizeof(Message)) return std::nullopt;
  Message message{};
  std::memcpy(&message, bytes.data(), sizeof(Message));
  return message;
}

// The head that all requests have in common.
struct RequestHead {
  uint8_t majorOpcode;
  uint8_t minorOpcode;
  uint16_t length;  // in units of four bytes; 0 for one longer than that can say
};

}  // namespace

std::optional<GrabChange> GrabProtocol::readRequest(Bytes bytes) {
  m_asked.reset();
  const auto head = messageIn<RequestHead>(bytes);
  if (!head) return std::nullopt;
  if (head->majorOpcode == XCB_GRAB_KEYBOARD) {
    const auto grab = messageIn<xcb_grab_keyboard_request_t>(bytes);
    if (grab) m_asked = {Kind::grab, Protocol::core, grab->grab_window};
  }
  if (head->majorOpcode == XCB_UNGRAB_KEYBOARD) {
    return GrabChange{Kind::ungrab, Protocol::core};
  }
  if (head->majorOpcode != m_xinputOpcode) return std::nullopt;
  if (head->minorOpcode == XCB_INPUT_XI_GRAB_DEVICE) {
    const auto grab = messageIn<xcb_input_xi_grab_device_request_t>(bytes);
    if (grab && grab->deviceid == m_keyboard) {
      m_asked = {Kind::grab, Protocol::xinput2, grab->window};
    }
  }
  if (head->minorOpcode == XCB_INPUT_XI_UNGRAB_DEVICE) {
    const auto ungrab = messageIn<xcb_input_xi_ungrab_device_request_t>(bytes);
    if (ungrab && ungrab->deviceid == m_keyboard) {
      return GrabChange{Kind::ungrab, Protocol::xinput2};
    }
  }
  return std::nullopt;
}

std::optional<GrabChange> GrabProtocol::readReply(Bytes bytes) {
  const auto asked = std::exchange(m_asked, std::nullopt);
  if (!asked) return std::nullopt;
  std::optional<uint8_t> status;
  if (asked->protocol == Protocol::core) {
    if (const auto reply = messageIn<xcb_grab_keyboard_reply_t>(bytes)) status = reply->status;
  } else if (const auto reply = messageIn<xcb_input_xi_grab_device_reply_t>(bytes)) {
    status = reply->status;
  }
  if (status != XCB_GRAB_STATUS_SUCCESS) return std::nullopt;
  return asked;
}

std::size_t GrabProtocol::lengthOfRequest(Bytes bytes) {
  const auto head = messageIn<RequestHead>(bytes);
  return head ? head->length * unitSize : 0;
}

std::size_t GrabProtocol::lengthOfReply(Bytes bytes) {
  const auto head = messageIn<xcb_generic_reply_t>(bytes);
  return head ? smallestReply + head->length * unitSize : 0;
}

}  // namespace zarvy::x11
