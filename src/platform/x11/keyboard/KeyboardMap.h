#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeycodeSet.h"

namespace zarvy::x11 {

class Connection;

// Parts of a keyboard's map as the server holds them, which is more than a keymap tells. Asked for
// once; one thread.
class KeyboardMap {
 public:
  // What of a key makes it do something.
  static constexpr uint16_t effects =
      XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_KEY_ACTIONS | XCB_XKB_MAP_PART_KEY_BEHAVIORS |
      XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;

  // Of the keyboard with this XInput number, or of the union of all; `parts` is a mask of
  // XCB_XKB_MAP_PART_. Absent where the server does not answer.
  [[nodiscard]] static std::optional<KeyboardMap> read(Connection& connection, uint16_t device,
                                                       uint16_t parts);

  [[nodiscard]] const xcb_xkb_get_map_reply_t* reply() const { return m_reply.get(); }
  [[nodiscard]] const xcb_xkb_get_map_map_t& map() const { return m_map; }

  // Key codes, and the real modifiers that each is bound to.
  [[nodiscard]] std::vector<std::pair<uint8_t, uint8_t>> modifierMap() const;

  // The keys that do nothing whatever: no symbol under any layout, no action, no behaviour, no
  // modifier. Of a map that was read with all `effects`.
  [[nodiscard]] KeycodeSet idleKeys() const;

 private:
  explicit KeyboardMap(XcbPtr<xcb_xkb_get_map_reply_t> reply);

  XcbPtr<xcb_xkb_get_map_reply_t> m_reply;
  xcb_xkb_get_map_map_t m_map{};  // points into the reply
};

}  // namespace zarvy::x11
