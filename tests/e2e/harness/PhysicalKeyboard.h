#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include <xkbcommon/xkbcommon.h>

#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// One key as a finger finds it, and what the other hand has to hold for it.
struct KeyStroke {
  xcb_keycode_t key = 0;
  bool shift = false;
  bool thirdLevel = false;  // AltGr
};

// Where the keys of a real keyboard are under the server's present layout and group. It knows the
// keys that hardware has and no others: a key code that a program gave a meaning to is not one that
// a person can press. A snapshot: read again after each change of the layout or the group. Each
// keyboard of a server has a group of its own; the server's is that of the one used last.
class PhysicalKeyboard {
 public:
  explicit PhysicalKeyboard(const XConnection& connection);
  PhysicalKeyboard(const XConnection& connection, std::int32_t device);

  [[nodiscard]] std::optional<KeyStroke> strokeFor(char32_t character) const;
  [[nodiscard]] std::optional<KeyStroke> strokeForSymbol(xkb_keysym_t symbol) const;

  // The letters that every keyboard types by one key, and by one with Shift where `withShift`.
  [[nodiscard]] QString letters(bool withShift) const;

  [[nodiscard]] xcb_keycode_t shiftKey() const { return m_shiftKey; }
  [[nodiscard]] xcb_keycode_t thirdLevelKey() const { return m_thirdLevelKey; }

 private:
  struct Entry {
    KeyStroke stroke;
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    bool onEveryKeyboard = true;
  };

  void readKey(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group);

  std::vector<Entry> m_entries;  // fewest modifiers first
  xcb_keycode_t m_shiftKey = 0;
  xcb_keycode_t m_thirdLevelKey = 0;
};

}  // namespace zarvy::e2e
