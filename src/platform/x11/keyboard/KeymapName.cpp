#include "platform/x11/keyboard/KeymapName.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"

namespace zarvy::x11 {

KeymapName KeymapName::ask(Connection& connection, uint16_t device) {
  const auto cookie = xcb_xkb_get_names(connection.xcb(), device, XCB_XKB_NAME_DETAIL_SYMBOLS);
  return {connection, cookie.sequence};
}

xcb_atom_t KeymapName::answer() const {
  const XcbPtr<xcb_xkb_get_names_reply_t> reply(
      xcb_xkb_get_names_reply(m_connection.xcb(), {m_sequence}, nullptr));
  if (!reply || reply->which != XCB_XKB_NAME_DETAIL_SYMBOLS) return XCB_ATOM_NONE;
  xcb_xkb_get_names_value_list_t names{};
  xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(reply.get()), reply->nTypes,
                                      reply->indicators, reply->virtualMods, reply->groupNames,
                                      reply->nKeys, reply->nKeyAliases, reply->nRadioGroups,
                                      reply->which, &names);
  return names.symbolsName;
}

}  // namespace zarvy::x11
