#include "platform/x11/keyboard/ModifierKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/ModifierFlags.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/keyboard/KeyPositions.h"
#include "platform/x11/keyboard/KeyboardMap.h"

namespace zarvy::x11 {

namespace {

enum class Role { none, shift, option, command, numLock, capsLock, levelThree, other };

Role roleOf(xkb_keysym_t symbol) {
  switch (symbol) {
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
      return Role::shift;
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
    case XKB_KEY_Meta_L:
    case XKB_KEY_Meta_R:
      return Role::option;
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
    case XKB_KEY_Hyper_L:
    case XKB_KEY_Hyper_R:
      return Role::command;
    case XKB_KEY_Num_Lock:
      return Role::numLock;
    case XKB_KEY_Caps_Lock:
    case XKB_KEY_Shift_Lock:
      return Role::capsLock;
    case XKB_KEY_ISO_Level3_Shift:
      return Role::levelThree;
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
    case XKB_KEY_ISO_Level5_Shift:
    case XKB_KEY_Mode_switch:
      return Role::other;
    default:
      return Role::none;
  }
}

// The first symbol with a role on any level of the key's first layout; some keyboards carry
// modifiers on fake keys whose plain level is empty.
Role roleOfKey(xkb_keymap* keymap, xkb_keycode_t key) {
  const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, 0);
  for (xkb_level_index_t level = 0; level < levels; ++level) {
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, key, 0, level, &symbols);
    if (count != 1) continue;
    const Role role = roleOf(symbols[0]);
    if (role != Role::none) return role;
  }
  return Role::none;
}

Role roleOfPlainLevel(xkb_keymap* keymap, xkb_keycode_t key) {
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(keymap, key, 0, 0, &symbols);
  return count == 1 ? roleOf(symbols[0]) : Role::none;
}

bool isLock(Role role) {
  return role == Role::numLock || role == Role::capsLock;
}

}  // namespace

ModifierKeys ModifierKeys::read(Connection& connection, uint16_t device, xkb_keymap* keymap) {
  ModifierKeys keys;
  const auto map = KeyboardMap::read(connection, device, XCB_XKB_MAP_PART_MODIFIER_MAP);
  if (!map) return keys;
  for (const auto& [keycode, realModifiers] : map->modifierMap()) {
    keys.addBoundKey(realModifiers, keycode, keymap);
  }
  for (int keycode = lowestKeycode; keycode <= highestKeycode; ++keycode) {
    keys.addBySymbol(static_cast<uint8_t>(keycode), keymap);
  }
  return keys;
}

void ModifierKeys::addBoundKey(uint32_t realModifiers, uint8_t keycode, xkb_keymap* keymap) {
  all.set(keycode);
  unused &= ~realModifiers;
  const Role role = roleOfKey(keymap, keycode);
  if (role == Role::option) option |= realModifiers;
  if (role == Role::command) command |= realModifiers;
  if (role == Role::numLock) numLock |= realModifiers;
  if (role == Role::levelThree) levelThree |= realModifiers;
  // What a key does is told by what it is bound to: a Caps Lock key can be a second Control.
  if (realModifiers != lock && role != Role::numLock) momentary.set(keycode);
}

// A key can hold a modifier without being bound to it: layouts with AltGr bind a key that no
// keyboard has, and give the right Alt the same symbol.
void ModifierKeys::addBySymbol(uint8_t keycode, xkb_keymap* keymap) {
  const Role role = roleOfPlainLevel(keymap, keycode);
  if (role == Role::none) return;
  all.set(keycode);
  if (!isLock(role)) momentary.set(keycode);
  if (role == Role::shift) shiftKeys.push_back(keycode);
  if (role == Role::levelThree) levelThreeKeys.push_back(keycode);
  const char* const name = xkb_keymap_key_get_name(keymap, keycode);
  const bool isOnKeyboards = name && virtualKeyOfPosition(name).has_value();
  if (isOnKeyboards && !isLock(role) && role != Role::shift) otherModifierKeys.push_back(keycode);
}

quint64 ModifierKeys::flagsOf(uint32_t realMask) const {
  quint64 flags = 0;
  if (realMask & shift) flags |= modifier::shift;
  if (realMask & lock) flags |= modifier::capsLock;
  if (realMask & control) flags |= modifier::control;
  if (realMask & option) flags |= modifier::option;
  if (realMask & command) flags |= modifier::command;
  return flags;
}

uint32_t ModifierKeys::ignoredForText() const {
  return (lock | control | option | command) & ~(levelThree | numLock | shift);
}

}  // namespace zarvy::x11
