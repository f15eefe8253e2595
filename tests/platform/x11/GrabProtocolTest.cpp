#include <cstring>
#include <vector>

#include <gtest/gtest.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include "platform/x11/capture/GrabProtocol.h"

namespace zarvy::x11 {
namespace {

constexpr uint8_t xinputOpcode = 131;
constexpr uint16_t keyboard = 3;

constexpr uint32_t window = 0x600044;

constexpr GrabChange coreGrab{GrabChange::Kind::grab, GrabChange::Protocol::core, window};
constexpr GrabChange coreUngrab{GrabChange::Kind::ungrab, GrabChange::Protocol::core};
constexpr GrabChange xinputGrab{GrabChange::Kind::grab, GrabChange::Protocol::xinput2, window};
constexpr GrabChange xinputUngrab{GrabChange::Kind::ungrab, GrabChange::Protocol::xinput2};

using Bytes = std::vector<std::byte>;

template <typename Message>
Bytes bytesOf(const Message& message) {
  Bytes bytes(sizeof(Message));
  std::memcpy(bytes.data(), &message, sizeof(Message));
  return bytes;
}

Bytes grabKeyboard() {
  xcb_grab_keyboard_request_t request{};
  request.major_opcode = XCB_GRAB_KEYBOARD;
  request.length = 4;
  request.grab_window = window;
  return bytesOf(request);
}

Bytes ungrabKeyboard() {
  xcb_ungrab_keyboard_request_t request{};
  request.major_opcode = XCB_UNGRAB_KEYBOARD;
  request.length = 2;
  return bytesOf(request);
}

Bytes grabDevice(uint16_t device) {
  xcb_input_xi_grab_device_request_t request{};
  request.major_opcode = xinputOpcode;
  request.minor_opcode = XCB_INPUT_XI_GRAB_DEVICE;
  request.length = 6;
  request.window = window;
  request.deviceid = device;
  return bytesOf(request);
}

Bytes ungrabDevice(uint16_t device) {
  xcb_input_xi_ungrab_device_request_t request{};
  request.major_opcode = xinputOpcode;
  request.minor_opcode = XCB_INPUT_XI_UNGRAB_DEVICE;
  request.length = 3;
  request.deviceid = device;
  return bytesOf(request);
}

Bytes coreReply(uint8_t status) {
  xcb_grab_keyboard_reply_t reply{};
  reply.response_type = 1;
  reply.status = status;
  Bytes bytes = bytesOf(reply);
  bytes.resize(32);
  return bytes;
}

Bytes xinputReply(uint8_t status) {
  xcb_input_xi_grab_device_reply_t reply{};
  reply.response_type = 1;
  reply.status = status;
  return bytesOf(reply);
}

class GrabProtocolTest : public testing::Test {
 protected:
  GrabProtocol m_protocol{xinputOpcode, keyboard};
};

TEST_F(GrabProtocolTest, TakesAGrabForOneOnceItIsGranted) {
  EXPECT_EQ(m_protocol.readRequest(grabKeyboard()), std::nullopt);
  EXPECT_EQ(m_protocol.readReply(coreReply(XCB_GRAB_STATUS_SUCCESS)), coreGrab);
  EXPECT_EQ(m_protocol.readRequest(grabDevice(keyboard)), std::nullopt);
  EXPECT_EQ(m_protocol.readReply(xinputReply(XCB_GRAB_STATUS_SUCCESS)), xinputGrab);
}

TEST_F(GrabProtocolTest, TakesARefusedOneForNone) {
  static_cast<void>(m_protocol.readRequest(grabKeyboard()));
  EXPECT_EQ(m_protocol.readReply(coreReply(XCB_GRAB_STATUS_ALREADY_GRABBED)), std::nullopt);
  static_cast<void>(m_protocol.readRequest(grabDevice(keyboard)));
  EXPECT_EQ(m_protocol.readReply(xinputReply(XCB_GRAB_STATUS_FROZEN)), std::nullopt);
}

TEST_F(GrabProtocolTest, TakesAnAnswerForThatToTheLatestRequestAlone) {
  EXPECT_EQ(m_protocol.readReply(coreReply(XCB_GRAB_STATUS_SUCCESS)), std::nullopt);
  static_cast<void>(m_protocol.readRequest(grabKeyboard()));
  EXPECT_EQ(m_protocol.readReply(coreReply(XCB_GRAB_STATUS_SUCCESS)), coreGrab);
  EXPECT_EQ(m_protocol.readReply(coreReply(XCB_GRAB_STATUS_SUCCESS)), std::nullopt);
  static_cast<void>(m_protocol.readRequest(grabKeyboard()));
  static_cast<void>(m_protocol.readRequest(grabDevice(2)));
  EXPECT_EQ(m_protocol.readReply(xinputReply(XCB_GRAB_STATUS_SUCCESS)), std::nullopt);
}

TEST_F(GrabProtocolTest, KnowsTheEndOfAGrab) {
  EXPECT_EQ(m_protocol.readRequest(ungrabKeyboard()), coreUngrab);
  EXPECT_EQ(m_protocol.readRequest(ungrabDevice(keyboard)), xinputUngrab);
}

TEST_F(GrabProtocolTest, HasNothingToDoWithOtherDevicesAndRequests) {
  EXPECT_EQ(m_protocol.readRequest(ungrabDevice(2)), std::nullopt);
  for (int opcode = 0; opcode < 256; ++opcode) {
    if (opcode == XCB_GRAB_KEYBOARD || opcode == XCB_UNGRAB_KEYBOARD) continue;
    const Bytes request{std::byte(opcode), std::byte{0}, std::byte{1}, std::byte{0}};
    EXPECT_EQ(m_protocol.readRequest(request), std::nullopt) << opcode;
    EXPECT_EQ(m_protocol.readReply(coreReply(XCB_GRAB_STATUS_SUCCESS)), std::nullopt) << opcode;
  }
}

TEST_F(GrabProtocolTest, BearsMessagesThatAreCutOff) {
  for (const Bytes& whole : {grabKeyboard(), grabDevice(keyboard), ungrabDevice(keyboard)}) {
    for (std::size_t size = 0; size < 4; ++size) {
      EXPECT_EQ(m_protocol.readRequest(std::span(whole).first(size)), std::nullopt);
    }
  }
  static_cast<void>(m_protocol.readRequest(grabKeyboard()));
  EXPECT_EQ(m_protocol.readReply({}), std::nullopt);
}

TEST_F(GrabProtocolTest, KnowsWhereTheNextMessageBegins) {
  EXPECT_EQ(GrabProtocol::lengthOfRequest(grabKeyboard()), 16U);
  EXPECT_EQ(GrabProtocol::lengthOfRequest({}), 0U);
  EXPECT_EQ(GrabProtocol::lengthOfReply(coreReply(0)), 32U);
  EXPECT_EQ(GrabProtocol::lengthOfReply({}), 0U);
  Bytes longer = xinputReply(0);
  longer.at(4) = std::byte{3};
  EXPECT_EQ(GrabProtocol::lengthOfReply(longer), 44U);
}

}  // namespace
}  // namespace zarvy::x11
