#include "platform/x11/capture/GrabRecord.h"

#include <array>
#include <pthread.h>
#include <sys/socket.h>
#include <utility>

#include <xcb/record.h>
#include <xcb/xinput.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

namespace {

// What a part of the record is about.
enum class Category : uint8_t {
  fromServer = 0,
  fromClient = 1,
  clientStarted = 2,
  clientDied = 3,
  startOfData = 4,
  endOfData = 5,
};

bool hasRecord(xcb_connection_t* xcb) {
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(xcb, &xcb_record_id);
  if (!extension || !extension->present) return false;
  const XcbPtr<xcb_record_query_version_reply_t> version(
      xcb_record_query_version_reply(xcb, xcb_record_query_version(xcb, 1, 13), nullptr));
  return version != nullptr;
}

// The requests for the keyboard with their answers, and the ends of clients.
std::array<xcb_record_range_t, 2> wantedRanges(uint8_t xinputOpcode) {
  xcb_record_range_t core{};
  core.core_requests = {XCB_GRAB_KEYBOARD, XCB_UNGRAB_KEYBOARD};
  core.core_replies = {XCB_GRAB_KEYBOARD, XCB_GRAB_KEYBOARD};
  core.client_died = 1;
  xcb_record_range_t xinput{};
  xinput.ext_requests = {{xinputOpcode, xinputOpcode},
                         {XCB_INPUT_XI_GRAB_DEVICE, XCB_INPUT_XI_UNGRAB_DEVICE}};
  xinput.ext_replies = {{xinputOpcode, xinputOpcode},
                        {XCB_INPUT_XI_GRAB_DEVICE, XCB_INPUT_XI_GRAB_DEVICE}};
  return {core, xinput};
}

}  // namespace

GrabRecord::GrabRecord(const Connection& connection, Listener listener)
    : m_protocol(connection.xinputOpcode(), static_cast<uint16_t>(connection.coreKeyboard())),
      m_listener(std::move(listener)),
      m_xcb(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(m_xcb.get()) != 0 || !hasRecord(m_xcb.get())) return;
  startRecording(connection.xinputOpcode());
  // The first answer says that the record has begun: what happens from now on is in it.
  if (!nextPart()) return;
  m_thread = std::thread([this] {
    while (const auto part = nextPart()) read(*part);
  });
  pthread_setname_np(m_thread.native_handle(), "x11-grabs");
}

GrabRecord::~GrabRecord() {
  // Wakes the thread up, whatever the server is about.
  ::shutdown(xcb_get_file_descriptor(m_xcb.get()), SHUT_RDWR);
  if (m_thread.joinable()) m_thread.join();
}

void GrabRecord::startRecording(uint8_t xinputOpcode) {
  const xcb_record_context_t context = xcb_generate_id(m_xcb.get());
  const xcb_record_client_spec_t clients = XCB_RECORD_CS_ALL_CLIENTS;
  const auto ranges = wantedRanges(xinputOpcode);
  xcb_record_create_context(m_xcb.get(), context, 0, 1, ranges.size(), &clients, ranges.data());
  // One request with any number of answers.
  m_request = xcb_record_enable_context(m_xcb.get(), context).sequence;
}

// Waits for it. Null once there are no more.
GrabRecord::Part GrabRecord::nextPart() const {
  return Part(xcb_record_enable_context_reply(m_xcb.get(), {m_request}, nullptr));
}

void GrabRecord::read(const xcb_record_enable_context_reply_t& part) {
  // Clients of another byte order run on machines that are no longer in use.
  if (part.client_swapped != 0) return;
  switch (static_cast<Category>(part.category)) {
    case Category::fromClient:
      readMessages(part, true);
      break;
    case Category::fromServer:
      readMessages(part, false);
      break;
    case Category::clientDied:
      m_listener.onClientGone(part.xid_base);
      break;
    default:
      break;
  }
}

void GrabRecord::readMessages(const xcb_record_enable_context_reply_t& part, bool areRequests) {
  std::span bytes = std::as_bytes(
      std::span(xcb_record_enable_context_data(&part),
                static_cast<std::size_t>(xcb_record_enable_context_data_length(&part))));
  while (!bytes.empty()) {
    const auto change = areRequests ? m_protocol.readRequest(bytes) : m_protocol.readReply(bytes);
    if (change) m_listener.onChange(*change, part.xid_base, part.server_time);
    const std::size_t length =
        areRequests ? GrabProtocol::lengthOfRequest(bytes) : GrabProtocol::lengthOfReply(bytes);
    if (length == 0 || length >= bytes.size()) return;
    bytes = bytes.subspan(length);
  }
}

}  // namespace zarvy::x11
