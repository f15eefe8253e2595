#include "platform/x11/typing/ScratchKeyWriter.h"

#include <algorithm>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/keyboard/KeyboardMap.h"
#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/keyboard/LiveKeymap.h"

namespace zarvy::x11 {

namespace {

constexpr std::size_t wordsPerKey = 1 + scratchKeyLevels;  // the key code, then its symbols
constexpr uint32_t longestRecord = 256 * wordsPerKey;

// The mapping is read, changed and written back; no other client may change it in between.
class ServerGrab {
 public:
  explicit ServerGrab(Connection& connection) : m_connection(connection) {
    xcb_grab_server(m_connection.xcb());
  }
  ~ServerGrab() {
    xcb_ungrab_server(m_connection.xcb());
    m_connection.flush();
  }
  ServerGrab(const ServerGrab&) = delete;
  ServerGrab& operator=(const ServerGrab&) = delete;

 private:
  Connection& m_connection;
};

bool isEmpty(const ScratchKeySymbols& symbols) {
  return std::all_of(symbols.begin(), symbols.end(),
                     [](xkb_keysym_t symbol) { return symbol == XKB_KEY_NoSymbol; });
}

// A type with two levels shows the first two symbols of the four.
bool holds(const std::vector<xkb_keysym_t>& onKey, const ScratchKeySymbols& written) {
  return !onKey.empty() && onKey.size() <= written.size() &&
         std::equal(onKey.begin(), onKey.end(), written.begin());
}

}  // namespace

ScratchKeyWriter::ScratchKeyWriter(Connection& connection, OwnMapChanges& ownChanges,
                                   const LiveKeymap& keymap)
    : m_connection(connection), m_ownChanges(ownChanges), m_keymap(keymap) {}

ScratchKeyWriter::Kind ScratchKeyWriter::kind() const {
  const auto table = KeySymbolTable::read(m_connection, m_keymap.device());
  const auto keymap = m_keymap.current();
  if (!table) return {};
  const auto type = table->slotType(keymap->modifiers().usableLevelThree());
  return {.levels = keymap->modifiers().shiftKeys.empty() ? 1 : type.levels,
          .isSwappedByCapsLock = type.isSwappedByCapsLock};
}

std::vector<uint8_t> ScratchKeyWriter::freeKeys() const {
  KeycodeSet idle;
  idle.set();
  for (const uint16_t device : everyKeyboard()) {
    const auto map = KeyboardMap::read(m_connection, device, KeyboardMap::effects);
    idle = map ? idle & map->idleKeys() : KeycodeSet();
  }
  std::vector<uint8_t> keycodes;
  for (std::size_t code = 0; code < idle.size(); ++code) {
    if (idle[code]) keycodes.push_back(static_cast<uint8_t>(code));
  }
  const auto keymap = m_keymap.current();
  std::stable_sort(keycodes.begin(), keycodes.end(), [&](uint8_t left, uint8_t right) {
    return keymap->rarity(left) < keymap->rarity(right);
  });
  return keycodes;
}

// The record is written ahead of the keys: a crash in between leaves too much on record, which the
// next start sees, and never too little.
ScratchKeyWriter::Outcome ScratchKeyWriter::write(const Keys& keys, bool always) {
  const ServerGrab grab(m_connection);
  const Keys before = readRecord();
  if (!areOurs(keys, before)) return Outcome::notFree;
  Keys record = before;
  for (const auto& [keycode, symbols] : keys) record[keycode] = symbols;
  const Tables tables = tablesWith(keys);
  if (!always && KeyboardState::query(m_connection).heldModifiers != 0) {
    return Outcome::modifierIsHeld;
  }
  writeRecord(record);
  if (writeTables(tables)) return Outcome::written;
  Keys former;
  for (const auto& [keycode, symbols] : keys) {
    const auto known = before.find(keycode);
    former[keycode] = known != before.end() ? known->second : ScratchKeySymbols{};
  }
  static_cast<void>(writeTables(tablesWith(former)));
  writeRecord(before);
  return Outcome::refused;
}

// True where each of the keys does nothing, or what this program has made it do.
bool ScratchKeyWriter::areOurs(const Keys& keys, const Keys& record) const {
  for (const uint16_t device : everyKeyboard()) {
    const auto map = KeyboardMap::read(m_connection, device, KeyboardMap::effects);
    const auto table = KeySymbolTable::read(m_connection, device);
    if (!map || !table) continue;  // unplugged meanwhile
    const KeycodeSet idle = map->idleKeys();
    const bool allOurs = std::all_of(keys.begin(), keys.end(), [&](const auto& key) {
      const auto known = record.find(key.first);
      return idle[key.first] ||
             (known != record.end() && holds(table->symbols(key.first), known->second));
    });
    if (!allOurs) return false;
  }
  return true;
}

ScratchKeyWriter::Tables ScratchKeyWriter::tablesWith(const Keys& keys) const {
  const uint32_t levelThree = m_keymap.current()->modifiers().usableLevelThree();
  return editedTables([&](KeySymbolTable& table) {
    const auto type = table.slotType(levelThree);
    for (const auto& [keycode, symbols] : keys) {
      if (isEmpty(symbols)) {
        table.setSymbols(keycode, {}, {});
      } else {
        table.setSymbols(keycode, type, {symbols.begin(), symbols.begin() + type.levels});
      }
    }
  });
}

void ScratchKeyWriter::giveBack() {
  const Keys record = readRecord();
  if (!record.empty()) {
    const ServerGrab grab(m_connection);
    const Tables tables = editedTables([&](KeySymbolTable& table) {
      for (const auto& [keycode, symbols] : record) {
        if (holds(table.symbols(keycode), symbols)) table.setSymbols(keycode, {}, {});
      }
    });
    if (!writeTables(tables)) return;
  }
  xcb_delete_property(m_connection.xcb(), m_connection.roots().front(),
                      m_connection.atoms().zarvyScratchKeys);
  m_connection.synchronize();
}

// The union of all keyboards takes over the mapping of whichever keyboard is used, so each has to
// have the scratch keys; and each keeps whatever else is its own. The union itself is never
// written: the server would give its layout to every keyboard.
std::vector<uint16_t> ScratchKeyWriter::everyKeyboard() const {
  return HeldKeys(m_connection).allKeyboards();
}

ScratchKeyWriter::Tables ScratchKeyWriter::editedTables(const Edit& edit) const {
  Tables edited;
  for (const uint16_t device : everyKeyboard()) {
    auto table = KeySymbolTable::read(m_connection, device);
    if (!table) {
      edited.areAll = false;
      continue;
    }
    edit(*table);
    edited.tables.push_back(std::move(*table));
  }
  return edited;
}

// False where a table is missing or the server has refused one.
bool ScratchKeyWriter::writeTables(const Tables& edited) {
  bool complete = edited.areAll;
  for (const KeySymbolTable& table : edited.tables) {
    complete = table.write(m_connection, m_ownChanges) && complete;
  }
  tellState();
  return complete;
}

// Applications of Qt 5 that read a new mapping forget which layout is locked, and Caps Lock, until
// they are told of any change of the state. A modifier that no key has is locked for a moment, or
// any that is not where each has one; no other client can act meanwhile.
void ScratchKeyWriter::tellState() {
  const KeyboardState state = KeyboardState::query(m_connection);
  if (state.lockedModifiers == 0 && state.lockedLayout == 0) return;
  constexpr uint32_t modOneToFive = 0xf8;
  const uint32_t unused = m_keymap.current()->modifiers().unused;
  const uint32_t candidates = (unused != 0 ? unused : modOneToFive) & ~state.lockedModifiers;
  const auto changed = static_cast<uint8_t>(candidates & -candidates);
  for (const uint8_t locks : {changed, uint8_t{0}}) {
    xcb_xkb_latch_lock_state(m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, changed, locks, 0, 0, 0,
                             0, 0);
  }
}

bool ScratchKeyWriter::hasRecord() const {
  return !readRecord().empty();
}

ScratchKeyWriter::Keys ScratchKeyWriter::readRecord() const {
  Keys record;
  const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      m_connection.xcb(),
      xcb_get_property(m_connection.xcb(), 0, m_connection.roots().front(),
                       m_connection.atoms().zarvyScratchKeys, XCB_ATOM_CARDINAL, 0, longestRecord),
      nullptr));
  if (!reply || reply->format != 32) return record;
  const auto* words = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
  for (uint32_t at = 0; at + wordsPerKey <= reply->value_len; at += wordsPerKey) {
    ScratchKeySymbols& symbols = record[static_cast<uint8_t>(words[at])];
    std::copy_n(words + at + 1, symbols.size(), symbols.begin());
  }
  return record;
}

void ScratchKeyWriter::writeRecord(const Keys& keys) {
  std::vector<uint32_t> words;
  for (const auto& [keycode, symbols] : keys) {
    if (isEmpty(symbols)) continue;
    words.push_back(keycode);
    words.insert(words.end(), symbols.begin(), symbols.end());
  }
  const xcb_atom_t property = m_connection.atoms().zarvyScratchKeys;
  if (words.empty()) {
    xcb_delete_property(m_connection.xcb(), m_connection.roots().front(), property);
    return;
  }
  xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_connection.roots().front(),
                      property, XCB_ATOM_CARDINAL, 32, static_cast<uint32_t>(words.size()),
                      words.data());
}

}  // namespace zarvy::x11
