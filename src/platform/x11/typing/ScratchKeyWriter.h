#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <vector>

#include <xkbcommon/xkbcommon.h>

#include "platform/x11/typing/KeySymbolTable.h"

namespace zarvy::x11 {

class Connection;
class LiveKeymap;
class OwnMapChanges;

inline constexpr int scratchKeyLevels = 4;

// The symbols of one scratch key, level by level.
using ScratchKeySymbols = std::array<xkb_keysym_t, scratchKeyLevels>;

// Writes symbols onto scratch keys in the server's mapping, all in one request for each keyboard,
// since every change makes every client of the display read its keymap again. Keeps a record of the
// keys and symbols in a property of the root window, so that a later start can give back what a
// crash left behind. One thread at a time.
class ScratchKeyWriter {
 public:
  // `keymap` is that of the union of all keyboards.
  ScratchKeyWriter(Connection& connection, OwnMapChanges& ownChanges, const LiveKeymap& keymap);

  // What a scratch key is under the present keymap.
  struct Kind {
    int levels = 0;  // 4, 2, 1, or 0 where the keymap cannot be read
    bool isSwappedByCapsLock = true;

    bool operator==(const Kind&) const = default;
  };
  [[nodiscard]] Kind kind() const;

  // The keys that do nothing on any keyboard, those first that the least hardware has.
  [[nodiscard]] std::vector<uint8_t> freeKeys() const;

  enum class Outcome {
    written,
    modifierIsHeld,  // nothing has been changed, as for the next
    notFree,         // another client has given one of the keys a meaning
    refused          // by the server, for one of the keyboards; nothing of it is left on the others
  };

  // Puts the symbols on the keys; a key with no symbol at all becomes empty again. Returns once the
  // server has done it. Where a modifier is held at the last moment it does so only if `always`.
  [[nodiscard]] Outcome write(const std::map<uint8_t, ScratchKeySymbols>& keys, bool always);

  // Empties the keys that the record names, where they still hold what was written, and removes the
  // record.
  void giveBack();

  // True after a run of this program that did not come to give its keys back.
  [[nodiscard]] bool hasRecord() const;

 private:
  using Keys = std::map<uint8_t, ScratchKeySymbols>;
  using Edit = std::function<void(KeySymbolTable&)>;
  [[nodiscard]] std::vector<uint16_t> everyKeyboard() const;
  // One for each keyboard.
  struct Tables {
    std::vector<KeySymbolTable> tables;
    bool areAll = true;  // else some could not be read
  };
  [[nodiscard]] Tables editedTables(const Edit& edit) const;
  [[nodiscard]] Tables tablesWith(const Keys& keys) const;
  [[nodiscard]] bool writeTables(const Tables& edited);
  void tellState();
  [[nodiscard]] bool areOurs(const Keys& keys, const Keys& record) const;
  [[nodiscard]] Keys readRecord() const;
  void writeRecord(const Keys& keys);

  Connection& m_connection;
  OwnMapChanges& m_ownChanges;
  const LiveKeymap& m_keymap;
};

}  // namespace zarvy::x11
