#pragma once

#include <cstdint>
#include <vector>

#include <QtGlobal>

#include <xkbcommon/xkbcommon.h>

#include "platform/x11/keyboard/KeycodeSet.h"

namespace zarvy::x11 {

class Connection;

// What each of the eight real modifiers of the server means under one keymap, and which keys hold
// it. Masks are X's: Shift 1, Lock 2, Control 4, Mod1 to Mod5 8 to 128.
struct ModifierKeys {
  uint32_t shift = 0x1;
  uint32_t lock = 0x2;
  uint32_t control = 0x4;
  uint32_t option = 0;   // Alt, Meta
  uint32_t command = 0;  // Super, Hyper
  uint32_t numLock = 0;
  uint32_t levelThree = 0;  // AltGr
  uint32_t unused = 0xf8;   // Mod1 to Mod5 as far as no key is bound to them

  std::vector<uint8_t> shiftKeys;          // keys that hold Shift
  std::vector<uint8_t> levelThreeKeys;     // keys that hold LevelThree
  std::vector<uint8_t> otherModifierKeys;  // keys that people have for all modifiers but Shift

  KeycodeSet momentary;  // keys that hold a modifier while they are down; not Caps or Num Lock
  KeycodeSet all;        // every key that holds or locks a modifier

  // Reads a keyboard's modifier mapping and gives it meaning by the symbols of its `keymap`.
  [[nodiscard]] static ModifierKeys read(Connection& connection, uint16_t device,
                                         xkb_keymap* keymap);

  // LevelThree's mask, or 0 where no key holds it.
  [[nodiscard]] uint32_t usableLevelThree() const {
    return levelThreeKeys.empty() ? 0 : levelThree;
  }

  // The program's modifier mask (ModifierFlags.h) of a mask of real modifiers.
  [[nodiscard]] quint64 flagsOf(uint32_t realMask) const;

  // The modifiers that turn a key press into a shortcut or another character, whichever the layout:
  // to be ignored when asking what a key types. AltGr is part of the layout and stays.
  [[nodiscard]] uint32_t ignoredForText() const;

 private:
  void addBoundKey(uint32_t realModifiers, uint8_t keycode, xkb_keymap* keymap);
  void addBySymbol(uint8_t keycode, xkb_keymap* keymap);
};

}  // namespace zarvy::x11
