#include "platform/x11/keyboard/KeymapSnapshot.h"

#include <string_view>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/FunctionKeys.h"

namespace zarvy::x11 {

namespace {

// True where the level says the same whether Caps Lock is on or not. Some keys ignore Caps Lock in
// their type and leave the capital to the application, which not every application then makes.
bool survivesCapsLock(xkb_state* state, xkb_keycode_t key, uint32_t lock, uint32_t locked,
                      xkb_keysym_t symbol) {
  if (!(locked & lock)) return true;
  const xkb_mod_mask_t consumed = xkb_state_key_get_consumed_mods(state, key);
  return (consumed & lock) || xkb_keysym_to_upper(symbol) == symbol;
}

// Whether the key by itself is a dead one. An input method that reads the keys for an application
// was seen to look at the modifiers some time later, when Shift was up again, and to compose.
bool isDeadKey(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout) {
  const xkb_keysym_t* symbols = nullptr;
  return xkb_keymap_key_get_syms_by_level(keymap, key, layout, 0, &symbols) == 1 &&
         symbols[0] >= XKB_KEY_dead_grave && symbols[0] <= XKB_KEY_dead_greek;
}

}  // namespace

KeymapName KeymapName::ask(Connection& connection, uint16_t device) {
  const auto cookie = xcb_xkb_get_names(connection.xcb(), device, XCB_XKB_NAME_DETAIL_SYMBOLS);
  return {connection, cookie.sequence};
}

xcb_atom_t KeymapName::answer() const {
  const XcbPtr<xcb_xkb_get_names_reply_t> reply(
      xcb_xkb_get_names_reply(m_connection.xcb(), {m_sequence}, nullptr));
  if (!reply || reply->which != XCB_XKB_NAME_DETAIL_SYMBOLS) return XCB_ATOM_NONE;
  xcb_xkb_get_names_value_list_t names{};
  xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(reply.get()), reply->nTypes,
                                      reply->indicators, reply->virtualMods, reply->groupNames,
                                      reply->nKeys, reply->nKeyAliases, reply->nRadioGroups,
                                      reply->which, &names);
  return names.symbolsName;
}

std::shared_ptr<KeymapSnapshot> KeymapSnapshot::read(Connection& connection, uint16_t device) {
  std::shared_ptr<KeymapSnapshot> snapshot(new KeymapSnapshot);
  // Ahead of the keymap: one that changes in between is not taken for the new one.
  snapshot->m_name = KeymapName::ask(connection, device).answer();
  snapshot->m_context = xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES);
  if (!snapshot->m_context) return nullptr;
  snapshot->m_keymap = xkb_x11_keymap_new_from_device(snapshot->m_context, connection.xcb(), device,
                                                      XKB_KEYMAP_COMPILE_NO_FLAGS);
  if (!snapshot->m_keymap) return nullptr;
  snapshot->m_layoutCount = xkb_keymap_num_layouts(snapshot->m_keymap);
  snapshot->m_modifiers = ModifierKeys::read(connection, device, snapshot->m_keymap);
  snapshot->readPositions();
  snapshot->tryShiftUnderCapsLock();
  return snapshot;
}

KeymapSnapshot::~KeymapSnapshot() {
  xkb_keymap_unref(m_keymap);
  xkb_context_unref(m_context);
}

void KeymapSnapshot::readPositions() {
  for (int code = 0; code <= highestKeycode; ++code) {
    const auto keycode = static_cast<uint8_t>(code);
    const char* name = xkb_keymap_key_get_name(m_keymap, keycode);
    const std::string_view position = name ? std::string_view(name) : std::string_view();
    m_virtualKeys[keycode] = virtualKeyAt(keycode, position);
    m_isKeypad[keycode] = position.starts_with("KP");
    m_rarities[keycode] = rarityOfPosition(position);
  }
}

// A place keeps its code where its key writes nothing either, so that it can still be pressed.
quint16 KeymapSnapshot::virtualKeyAt(uint8_t keycode, std::string_view position) const {
  const auto unnamed = static_cast<quint16>(unnamedKeyBase + keycode);
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(m_keymap, keycode, 0, 0, &symbols);
  const xkb_keysym_t symbol = count == 1 ? symbols[0] : XKB_KEY_NoSymbol;
  if (const auto function = functionOfSymbol(symbol)) return *function;
  const quint16 place = virtualKeyOfPosition(position).value_or(unnamed);
  const bool meansSomethingElse = m_modifiers.all[keycode] || xkb_keysym_to_utf32(symbol) >= U' ';
  return meansSomethingElse && isFunction(place) ? unnamed : place;
}

void KeymapSnapshot::tryShiftUnderCapsLock() {
  xkb_state* state = xkb_state_new(m_keymap);
  if (!state) return;
  for (const auto* keys : {&m_modifiers.shiftKeys, &m_modifiers.levelThreeKeys}) {
    for (const uint8_t keycode : *keys) {
      xkb_state_update_mask(state, 0, 0, m_modifiers.lock, 0, 0, 0);
      xkb_state_update_key(state, keycode, XKB_KEY_DOWN);
      xkb_state_update_key(state, keycode, XKB_KEY_UP);
      const xkb_mod_mask_t locked = xkb_state_serialize_mods(state, XKB_STATE_MODS_LOCKED);
      if (locked != m_modifiers.lock) m_shiftTurnsCapsLock = true;
    }
  }
  xkb_state_unref(state);
}

bool KeymapSnapshot::hasSymbols(uint8_t keycode) const {
  return xkb_keymap_num_layouts_for_key(m_keymap, keycode) > 0;
}

std::optional<uint8_t> KeymapSnapshot::keycodeOf(quint16 virtualKey) const {
  for (int code = lowestKeycode; code <= highestKeycode; ++code) {
    const auto keycode = static_cast<uint8_t>(code);
    if (m_virtualKeys[keycode] == virtualKey) return keycode;
  }
  return std::nullopt;
}

std::shared_ptr<const CharacterStrokes> KeymapSnapshot::strokes(uint32_t layout, uint32_t locked,
                                                                const KeycodeSet& excluded) const {
  auto strokes = std::make_shared<CharacterStrokes>();
  const std::lock_guard lock(m_mutex);
  xkb_state* state = xkb_state_new(m_keymap);
  if (!state) return strokes;
  // The plainest way to write a character is looked for first and kept.
  for (const bool levelThree : {false, true}) {
    if (levelThree && m_modifiers.levelThreeKeys.empty()) continue;
    for (const bool shift : {false, true}) {
      if (shift && m_modifiers.shiftKeys.empty()) continue;
      collectStrokes(state, layout, locked, shift, levelThree, excluded, *strokes);
    }
  }
  xkb_state_unref(state);
  return strokes;
}

void KeymapSnapshot::collectStrokes(xkb_state* state, uint32_t layout, uint32_t locked, bool shift,
                                    bool levelThree, const KeycodeSet& excluded,
                                    CharacterStrokes& strokes) const {
  const uint32_t held =
      (shift ? m_modifiers.shift : 0U) | (levelThree ? m_modifiers.levelThree : 0U);
  xkb_state_update_mask(state, held, 0, locked, 0, 0, layout);
  for (int code = lowestKeycode; code <= highestKeycode; ++code) {
    const auto keycode = static_cast<uint8_t>(code);
    if (excluded[keycode] || m_isKeypad[keycode] || m_modifiers.all[keycode]) continue;
    const xkb_layout_index_t keyLayout = xkb_state_key_get_layout(state, keycode);
    if (keyLayout == XKB_LAYOUT_INVALID) continue;
    if (held != 0 && isDeadKey(m_keymap, keycode, keyLayout)) continue;
    const xkb_keysym_t* symbols = nullptr;
    const xkb_level_index_t level = xkb_state_key_get_level(state, keycode, keyLayout);
    if (level == XKB_LEVEL_INVALID) continue;
    if (xkb_keymap_key_get_syms_by_level(m_keymap, keycode, keyLayout, level, &symbols) != 1) {
      continue;
    }
    const char32_t character = xkb_keysym_to_utf32(symbols[0]);
    if (character < U' ' || character == U'\x7f') continue;
    if (!survivesCapsLock(state, keycode, m_modifiers.lock, locked, symbols[0])) continue;
    strokes.try_emplace(character, KeyStroke{keycode, shift, levelThree});
  }
}

KeymapSnapshot::State KeymapSnapshot::newState(
    const std::shared_ptr<const KeymapSnapshot>& snapshot) {
  const std::lock_guard lock(snapshot->m_mutex);
  return State(xkb_state_new(snapshot->m_keymap), StateDeleter{snapshot});
}

void KeymapSnapshot::StateDeleter::operator()(xkb_state* state) const {
  const std::lock_guard lock(snapshot->m_mutex);
  xkb_state_unref(state);
}

}  // namespace zarvy::x11
