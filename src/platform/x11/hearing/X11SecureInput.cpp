#include "platform/x11/hearing/X11SecureInput.h"

#include <xcb/res.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/hearing/GrabWatch.h"

namespace zarvy::x11 {

namespace {

// Grabs of window managers were seen to last 13 to 20 ms.
constexpr std::chrono::milliseconds aMoment{150};

std::optional<qint32> processOfClient(xcb_connection_t* xcb, uint32_t client) {
  // A request to an extension that is not there would end the connection.
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(xcb, &xcb_res_id);
  if (!extension || !extension->present) return std::nullopt;
  const xcb_res_client_id_spec_t question{.client = client,
                                          .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const XcbPtr<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(xcb, xcb_res_query_client_ids(xcb, 1, &question), nullptr));
  if (!reply) return std::nullopt;
  const auto answers = xcb_res_query_client_ids_ids_iterator(reply.get());
  if (answers.rem == 0 || xcb_res_client_id_value_value_length(answers.data) < 1) {
    return std::nullopt;
  }
  return static_cast<qint32>(*xcb_res_client_id_value_value(answers.data));
}

}  // namespace

bool X11SecureInput::isSecureEventInputEnabled() const {
  if (m_grabs.isGrabbed()) m_grabs.lookAgain();
  return m_grabs.grabbedFor() >= aMoment && !isOwnGrab();
}

bool X11SecureInput::isOwnGrab() const {
  const std::optional<uint32_t> holder = m_grabs.holder();
  return holder ? m_isOwnClient(*holder) : m_isForThisProgram();
}

std::optional<qint32> X11SecureInput::ownerProcessIdentifier() const {
  const std::optional<uint32_t> holder = m_grabs.holder();
  if (!holder) return std::nullopt;
  return processOfClient(m_connection.xcb(), *holder);
}

}  // namespace zarvy::x11
