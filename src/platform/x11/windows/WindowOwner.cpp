#include "platform/x11/windows/WindowOwner.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

bool isMadeOn(xcb_connection_t* connection, uint32_t window) {
  const xcb_setup_t* setup = xcb_get_setup(connection);
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

std::optional<qint32> processOfClient(xcb_connection_t* connection, uint32_t resource) {
  // A request to an extension that is not there would end the connection.
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_res_id);
  if (!extension || !extension->present) return std::nullopt;
  const xcb_res_client_id_spec_t question{.client = resource,
                                          .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const XcbPtr<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
      connection, xcb_res_query_client_ids(connection, 1, &question), nullptr));
  if (!reply) return std::nullopt;
  const auto answers = xcb_res_query_client_ids_ids_iterator(reply.get());
  if (answers.rem == 0 || xcb_res_client_id_value_value_length(answers.data) < 1) {
    return std::nullopt;
  }
  return static_cast<qint32>(*xcb_res_client_id_value_value(answers.data));
}

}  // namespace zarvy::x11
