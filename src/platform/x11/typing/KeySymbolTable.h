#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include <xkbcommon/xkbcommon.h>

namespace zarvy::x11 {

class Connection;
class OwnMapChanges;

// The symbols of every key of one keyboard, read, changed and written back. Each keyboard has a
// table of its own, since users may give them different layouts.
class KeySymbolTable {
 public:
  // A key type of the keymap under which a scratch key carries its symbols.
  struct SlotType {
    uint8_t index = 0;  // the server's number of the type
    int levels = 0;
    bool isSwappedByCapsLock = false;  // as a held Shift would; else it can do anything

    bool operator==(const SlotType&) const = default;
  };

  // The table of the keyboard with this XInput number, or of the union of all keyboards. Absent
  // where the server does not answer.
  [[nodiscard]] static std::optional<KeySymbolTable> read(Connection& connection, uint16_t device);

  // The widest type that heeds Caps Lock by swapping levels, and so leaves it no other say: four
  // levels where the keymap has it and `levelThree` (a real modifier) is not 0, else two. Some
  // options for Caps Lock leave no such type.
  [[nodiscard]] SlotType slotType(uint32_t levelThree) const;

  // The symbols on the first layout of a key; empty for a key without any.
  [[nodiscard]] std::vector<xkb_keysym_t> symbols(uint8_t keycode) const;

  // No symbols make the key empty.
  void setSymbols(uint8_t keycode, SlotType type, std::vector<xkb_keysym_t> symbols);

  // Writes every key that setSymbols() named in one request. False where the server refused.
  [[nodiscard]] bool write(Connection& connection, OwnMapChanges& ownChanges) const;

 private:
  struct Key {
    std::array<uint8_t, 4> typeOfLayout{};
    uint8_t groupInfo = 0;
    uint8_t width = 0;
    std::vector<xkb_keysym_t> symbols;
  };

  // A type as this table needs to know it.
  struct Type {
    int levels = 0;
    uint32_t modifiers = 0;
    std::vector<std::pair<uint32_t, int>> levelOf;  // modifiers, level from 0
  };

  [[nodiscard]] static bool gives(const Type& type,
                                  const std::vector<std::pair<uint32_t, int>>& levelOf);
  [[nodiscard]] Key fittedToTypes(Key key) const;
  [[nodiscard]] std::vector<uint8_t> packed(int first, int last) const;

  int m_firstKey = 0;
  uint16_t m_device = 0;
  std::vector<Key> m_keys;
  std::vector<Type> m_types;
  int m_firstChanged = 256;
  int m_lastChanged = -1;
};

}  // namespace zarvy::x11
