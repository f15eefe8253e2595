#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <vector>

#include <xkbcommon/xkbcommon.h>

namespace zarvy::x11 {

class Connection;
class KeyHearing;
class KeySymbolTable;

inline constexpr int spareKeyLevels = 4;

// The symbols of one spare key, level by level.
using SpareKeySymbols = std::array<xkb_keysym_t, spareKeyLevels>;

// Writes symbols onto spare keys in the server's mapping, all in one request for each keyboard,
// since every change makes every client of the display read its keymap again. Keeps a record of the
// keys and symbols in a property of the root window, so that a later start can give back what a
// crash left behind. One thread at a time.
class SpareKeyWriter {
 public:
  SpareKeyWriter(Connection& connection, KeyHearing& hearing);

  // How many levels a spare key has under the present keymap: 4, 2, or 0 where it cannot be read.
  [[nodiscard]] int levels() const;

  // Puts the symbols on the keys; a key with no symbol at all becomes empty again. Returns once the
  // server has done it; false where it refused.
  bool write(const std::map<uint8_t, SpareKeySymbols>& keys);

  // Empties the keys that the record names, where they still hold what was written, and removes the
  // record.
  void giveBack();

  // True after a run of this program that did not come to give its keys back.
  [[nodiscard]] bool hasRecord() const;

 private:
  using Edit = std::function<void(KeySymbolTable&)>;
  [[nodiscard]] bool editEveryKeyboard(const Edit& edit);
  [[nodiscard]] std::map<uint8_t, SpareKeySymbols> readRecord() const;
  void writeRecord(const std::map<uint8_t, SpareKeySymbols>& keys);

  Connection& m_connection;
  KeyHearing& m_hearing;
};

}  // namespace zarvy::x11
