#include "platform/x11/typing/KeySymbolTable.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeyboardMap.h"
#include "platform/x11/keyboard/OwnMapChanges.h"

namespace zarvy::x11 {

namespace {

constexpr uint32_t shiftMask = 0x1;
constexpr uint32_t lockMask = 0x2;
constexpr uint8_t alphabeticType = 2;  // every keymap has this type under this number
constexpr uint16_t wantedParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS;

// What each combination must give in a type whose Caps Lock only swaps levels.
std::vector<std::pair<uint32_t, int>> twoLevelsSwappedByLock() {
  return {{0, 0}, {shiftMask, 1}, {lockMask, 1}, {shiftMask | lockMask, 0}};
}

std::vector<std::pair<uint32_t, int>> fourLevelsSwappedByLock(uint32_t levelThree) {
  auto levels = twoLevelsSwappedByLock();
  for (const auto& [modifiers, level] : twoLevelsSwappedByLock()) {
    levels.emplace_back(modifiers | levelThree, level + 2);
  }
  return levels;
}

}  // namespace

std::optional<KeySymbolTable> KeySymbolTable::read(Connection& connection, uint16_t device) {
  const auto map = KeyboardMap::read(connection, device, wantedParts);
  if (!map) return std::nullopt;
  KeySymbolTable table;
  table.m_device = device;
  table.m_firstKey = map->reply()->firstKeySym;
  for (auto types = xcb_xkb_get_map_map_types_rtrn_iterator(map->reply(), &map->map());
       types.rem > 0; xcb_xkb_key_type_next(&types)) {
    Type type{.levels = types.data->numLevels, .modifiers = types.data->mods_mask, .levelOf = {}};
    for (auto entries = xcb_xkb_key_type_map_iterator(types.data); entries.rem > 0;
         xcb_xkb_kt_map_entry_next(&entries)) {
      if (entries.data->active) {
        type.levelOf.emplace_back(entries.data->mods_mask, entries.data->level);
      }
    }
    table.m_types.push_back(std::move(type));
  }
  for (auto keys = xcb_xkb_get_map_map_syms_rtrn_iterator(map->reply(), &map->map()); keys.rem > 0;
       xcb_xkb_key_sym_map_next(&keys)) {
    const xcb_keysym_t* symbols = xcb_xkb_key_sym_map_syms(keys.data);
    Key key{.groupInfo = keys.data->groupInfo,
            .width = keys.data->width,
            .symbols = {symbols, symbols + keys.data->nSyms}};
    std::copy(std::begin(keys.data->kt_index), std::end(keys.data->kt_index),
              key.typeOfLayout.begin());
    table.m_keys.push_back(std::move(key));
  }
  return table;
}

KeySymbolTable::SlotType KeySymbolTable::slotType(uint32_t levelThree) const {
  if (levelThree != 0) {
    const auto wanted = fourLevelsSwappedByLock(levelThree);
    const auto found = std::find_if(m_types.begin(), m_types.end(), [&](const Type& type) {
      return type.levels == 4 && type.modifiers == (shiftMask | lockMask | levelThree) &&
             gives(type, wanted);
    });
    if (found != m_types.end()) {
      return {.index = static_cast<uint8_t>(found - m_types.begin()),
              .levels = 4,
              .isSwappedByCapsLock = true};
    }
  }
  const bool isSwapped =
      m_types.size() > alphabeticType && gives(m_types[alphabeticType], twoLevelsSwappedByLock());
  return {.index = alphabeticType, .levels = 2, .isSwappedByCapsLock = isSwapped};
}

bool KeySymbolTable::gives(const Type& type, const std::vector<std::pair<uint32_t, int>>& levelOf) {
  return std::all_of(levelOf.begin(), levelOf.end(), [&](const auto& row) {
    const auto entry = std::find_if(type.levelOf.begin(), type.levelOf.end(),
                                    [&](const auto& known) { return known.first == row.first; });
    return (entry == type.levelOf.end() ? 0 : entry->second) == row.second;
  });
}

std::vector<xkb_keysym_t> KeySymbolTable::symbols(uint8_t keycode) const {
  const int index = keycode - m_firstKey;
  if (index < 0 || std::cmp_greater_equal(index, m_keys.size())) return {};
  const Key& key = m_keys[static_cast<std::size_t>(index)];
  const std::size_t width = std::min<std::size_t>(key.width, key.symbols.size());
  return {key.symbols.begin(), key.symbols.begin() + static_cast<std::ptrdiff_t>(width)};
}

void KeySymbolTable::setSymbols(uint8_t keycode, SlotType type, std::vector<xkb_keysym_t> symbols) {
  const int index = keycode - m_firstKey;
  if (index < 0 || std::cmp_greater_equal(index, m_keys.size())) return;
  Key key;
  if (!symbols.empty()) {
    symbols.resize(static_cast<std::size_t>(type.levels), XKB_KEY_NoSymbol);
    key.typeOfLayout[0] = type.index;
    key.groupInfo = 1;  // one layout, whichever is in force
    key.width = static_cast<uint8_t>(type.levels);
    key.symbols = std::move(symbols);
  }
  m_keys[static_cast<std::size_t>(index)] = std::move(key);
  m_firstChanged = std::min<int>(m_firstChanged, keycode);
  m_lastChanged = std::max<int>(m_lastChanged, keycode);
}

// Some layouts give a key more symbols than its types have levels. The server hands those out and
// takes none of them back.
KeySymbolTable::Key KeySymbolTable::fittedToTypes(Key key) const {
  const std::size_t layouts = std::min<std::size_t>(key.groupInfo & 0xfU, key.typeOfLayout.size());
  std::size_t width = 0;
  for (std::size_t layout = 0; layout < layouts; ++layout) {
    const std::size_t type = key.typeOfLayout.at(layout);
    if (type >= m_types.size()) return key;
    width = std::max(width, static_cast<std::size_t>(m_types[type].levels));
  }
  const std::size_t given = key.width;
  if (given <= width || key.symbols.size() != given * layouts) return key;
  std::vector<xkb_keysym_t> symbols;
  for (std::size_t layout = 0; layout < layouts; ++layout) {
    const auto first = key.symbols.begin() + static_cast<std::ptrdiff_t>(layout * given);
    symbols.insert(symbols.end(), first, first + static_cast<std::ptrdiff_t>(width));
  }
  key.symbols = std::move(symbols);
  key.width = static_cast<uint8_t>(width);
  return key;
}

// The wire form of the keys from `first` to `last`.
std::vector<uint8_t> KeySymbolTable::packed(int first, int last) const {
  std::vector<uint8_t> bytes;
  for (int keycode = first; keycode <= last; ++keycode) {
    const Key key = fittedToTypes(m_keys[static_cast<std::size_t>(keycode - m_firstKey)]);
    xcb_xkb_key_sym_map_t head{};
    std::copy(key.typeOfLayout.begin(), key.typeOfLayout.end(), std::begin(head.kt_index));
    head.groupInfo = key.groupInfo;
    head.width = key.width;
    head.nSyms = static_cast<uint16_t>(key.symbols.size());
    const std::size_t at = bytes.size();
    const std::size_t symbolBytes = key.symbols.size() * sizeof(xkb_keysym_t);
    bytes.resize(at + sizeof(head) + symbolBytes);
    std::memcpy(bytes.data() + at, &head, sizeof(head));
    if (symbolBytes > 0) {
      std::memcpy(bytes.data() + at + sizeof(head), key.symbols.data(), symbolBytes);
    }
  }
  return bytes;
}

bool KeySymbolTable::write(Connection& connection, OwnMapChanges& ownChanges) const {
  if (m_lastChanged < 0) return true;
  const std::vector<uint8_t> bytes = packed(m_firstChanged, m_lastChanged);
  std::size_t totalSymbols = 0;
  for (int keycode = m_firstChanged; keycode <= m_lastChanged; ++keycode) {
    totalSymbols +=
        fittedToTypes(m_keys[static_cast<std::size_t>(keycode - m_firstKey)]).symbols.size();
  }
  const auto first = static_cast<xcb_keycode_t>(m_firstChanged);
  const auto count = static_cast<uint8_t>(m_lastChanged - m_firstChanged + 1);
  xcb_connection_t* xcb = connection.xcb();
  xcb_void_cookie_t cookie{};
  ownChanges.make([&] {
    cookie = xcb_xkb_set_map_checked(
        xcb, m_device, XCB_XKB_MAP_PART_KEY_SYMS, 0, xcb_get_setup(xcb)->min_keycode,
        xcb_get_setup(xcb)->max_keycode, 0, 0, first, count, static_cast<uint16_t>(totalSymbols), 0,
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, bytes.data());
    return cookie.sequence;
  });
  const XcbPtr<xcb_generic_error_t> error(xcb_request_check(xcb, cookie));
  return !error && connection.isAlive();
}

}  // namespace zarvy::x11
