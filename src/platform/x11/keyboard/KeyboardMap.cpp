#include "platform/x11/keyboard/KeyboardMap.h"

#include <algorithm>

#include "platform/x11/connection/Connection.h"

namespace zarvy::x11 {

std::optional<KeyboardMap> KeyboardMap::read(Connection& connection, uint16_t device,
                                             uint16_t parts) {
  xcb_connection_t* xcb = connection.xcb();
  XcbPtr<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(
      xcb, xcb_xkb_get_map(xcb, device, parts, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
      nullptr));
  if (!reply) return std::nullopt;
  return KeyboardMap(std::move(reply));
}

KeyboardMap::KeyboardMap(XcbPtr<xcb_xkb_get_map_reply_t> reply) : m_reply(std::move(reply)) {
  xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(m_reply.get()), m_reply->nTypes, m_reply->nKeySyms,
                             m_reply->nKeyActions, m_reply->totalActions,
                             m_reply->totalKeyBehaviors, m_reply->virtualMods,
                             m_reply->totalKeyExplicit, m_reply->totalModMapKeys,
                             m_reply->totalVModMapKeys, m_reply->present, &m_map);
}

std::vector<std::pair<uint8_t, uint8_t>> KeyboardMap::modifierMap() const {
  std::vector<std::pair<uint8_t, uint8_t>> bindings;
  for (auto rows = xcb_xkb_get_map_map_modmap_rtrn_iterator(m_reply.get(), &m_map); rows.rem > 0;
       xcb_xkb_key_mod_map_next(&rows)) {
    bindings.emplace_back(rows.data->keycode, rows.data->mods);
  }
  return bindings;
}

KeycodeSet KeyboardMap::idleKeys() const {
  KeycodeSet idle;
  int keycode = m_reply->firstKeySym;
  for (auto keys = xcb_xkb_get_map_map_syms_rtrn_iterator(m_reply.get(), &m_map); keys.rem > 0;
       xcb_xkb_key_sym_map_next(&keys), ++keycode) {
    const xcb_keysym_t* symbols = xcb_xkb_key_sym_map_syms(keys.data);
    const bool isEmpty = std::all_of(symbols, symbols + keys.data->nSyms,
                                     [](xcb_keysym_t symbol) { return symbol == XCB_NO_SYMBOL; });
    idle[static_cast<uint8_t>(keycode)] = isEmpty;
  }
  for (int i = 0; i < m_reply->nKeyActions; ++i) {
    if (m_map.acts_rtrn_count[i] > 0) idle.reset(static_cast<uint8_t>(m_reply->firstKeyAction + i));
  }
  for (auto rows = xcb_xkb_get_map_map_behaviors_rtrn_iterator(m_reply.get(), &m_map); rows.rem > 0;
       xcb_xkb_set_behavior_next(&rows)) {
    idle.reset(rows.data->keycode);
  }
  for (const auto& [bound, modifiers] : modifierMap()) idle.reset(bound);
  for (auto rows = xcb_xkb_get_map_map_vmodmap_rtrn_iterator(m_reply.get(), &m_map); rows.rem > 0;
       xcb_xkb_key_v_mod_map_next(&rows)) {
    idle.reset(rows.data->keycode);
  }
  return idle;
}

}  // namespace zarvy::x11
