#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <unordered_map>

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/x11/keyboard/KeyPositions.h"
#include "platform/x11/keyboard/ModifierKeys.h"

namespace zarvy::x11 {

class Connection;

// The name of a keyboard's symbols, an atom. It is given together with a keymap and tells one from
// another, at a small part of the cost of reading it; a change of single keys leaves it as it is.
class KeymapName {
 public:
  // Asks for the name of the keyboard with this XInput number. Any thread.
  static KeymapName ask(Connection& connection, uint16_t device);

  // The answer; XCB_ATOM_NONE if there is none. Once.
  [[nodiscard]] xcb_atom_t answer() const;

 private:
  KeymapName(Connection& connection, unsigned sequence)
      : m_connection(connection), m_sequence(sequence) {}

  Connection& m_connection;
  unsigned m_sequence;  // of the request
};

// One key press that types a character: the key, and what must be held meanwhile.
struct KeyStroke {
  uint8_t keycode = 0;
  bool shift = false;
  bool levelThree = false;

  bool operator==(const KeyStroke&) const = default;
};

using CharacterStrokes = std::unordered_map<char32_t, KeyStroke>;

// A keyboard's keymap as it stood at one moment. Does not change; shared between the thread that
// hears and those that type. Any thread.
class KeymapSnapshot {
 public:
  // Of the keyboard with this XInput number; null where the server does not answer.
  [[nodiscard]] static std::shared_ptr<KeymapSnapshot> read(Connection& connection,
                                                            uint16_t device);

  // As KeymapName tells it.
  [[nodiscard]] xcb_atom_t name() const { return m_name; }

  ~KeymapSnapshot();
  KeymapSnapshot(const KeymapSnapshot&) = delete;
  KeymapSnapshot& operator=(const KeymapSnapshot&) = delete;

  [[nodiscard]] const ModifierKeys& modifiers() const { return m_modifiers; }

  // The place of a key, as a virtual key code; where the key's plain symbol has a function, such as
  // BackSpace, that of the function.
  [[nodiscard]] quint16 virtualKey(uint8_t keycode) const { return m_virtualKeys[keycode]; }

  // The key with that virtual key code; absent where the keyboard has none.
  [[nodiscard]] std::optional<uint8_t> keycodeOf(quint16 virtualKey) const;

  // True where a press of a Shift or LevelThree key turns Caps Lock on or off.
  [[nodiscard]] bool shiftTurnsCapsLock() const { return m_shiftTurnsCapsLock; }

  // False for a key that writes nothing under any layout.
  [[nodiscard]] bool hasSymbols(uint8_t keycode) const;

  // How common hardware is that has the key.
  [[nodiscard]] KeyRarity rarity(uint8_t keycode) const { return m_rarities[keycode]; }

  [[nodiscard]] uint32_t layoutCount() const { return m_layoutCount; }

  // How each character that `layout` (an XKB group, from 0) can write is typed while the real
  // modifiers `locked` are locked. Keys in `excluded` are passed over.
  [[nodiscard]] std::shared_ptr<const CharacterStrokes> strokes(uint32_t layout, uint32_t locked,
                                                                const KeycodeSet& excluded) const;

  // xkbcommon counts its references without a lock, so states are made and dropped through here.
  struct StateDeleter {
    std::shared_ptr<const KeymapSnapshot> snapshot;
    void operator()(xkb_state* state) const;
  };
  using State = std::unique_ptr<xkb_state, StateDeleter>;
  [[nodiscard]] static State newState(const std::shared_ptr<const KeymapSnapshot>& snapshot);

 private:
  KeymapSnapshot() = default;
  void readPositions();
  [[nodiscard]] quint16 virtualKeyAt(uint8_t keycode, std::string_view position) const;
  void tryShiftUnderCapsLock();
  void collectStrokes(xkb_state* state, uint32_t layout, uint32_t locked, bool shift,
                      bool levelThree, const KeycodeSet& excluded, CharacterStrokes& strokes) const;

  mutable std::mutex m_mutex;
  xkb_context* m_context = nullptr;
  xkb_keymap* m_keymap = nullptr;
  xcb_atom_t m_name = XCB_ATOM_NONE;
  ModifierKeys m_modifiers;
  std::array<quint16, 256> m_virtualKeys{};
  KeycodeSet m_isKeypad;
  bool m_shiftTurnsCapsLock = false;
  std::array<KeyRarity, 256> m_rarities{};
  uint32_t m_layoutCount = 1;
};

}  // namespace zarvy::x11
