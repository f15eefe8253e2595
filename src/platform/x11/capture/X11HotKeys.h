#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/HotKeys.h"

namespace zarvy::x11 {

class Connection;
class LiveKeymap;

// Finds out who has a key by asking for it: the server refuses what another client has. What it
// grants is given back in the same breath.
class X11HotKeys final : public HotKeys {
 public:
  // `keymap` is that of the union of all keyboards. Both outlive this.
  X11HotKeys(Connection& connection, const LiveKeymap& keymap)
      : m_connection(connection), m_keymap(keymap) {}

  // Waits for the server's answer.
  [[nodiscard]] bool isTakenByAnother(const HotKey& key) const override;

 private:
  [[nodiscard]] bool isTaken(xcb_window_t root, uint8_t keycode,
                             const std::vector<uint16_t>& masks) const;
  [[nodiscard]] bool isTakenThroughXInput(xcb_window_t root, uint8_t keycode,
                                          const std::vector<uint16_t>& masks) const;

  Connection& m_connection;
  const LiveKeymap& m_keymap;
};

}  // namespace zarvy::x11
