#include "e2e/harness/PhysicalKeyboard.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

#include <xkbcommon/xkbcommon-x11.h>

namespace zarvy::e2e {

namespace {

struct Release {
  void operator()(xkb_context* context) const { xkb_context_unref(context); }
  void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
  void operator()(xkb_state* state) const { xkb_state_unref(state); }
};

// The keys of a 105-key keyboard and of a Japanese one, but for the function row. Of the keypad the
// keys for digits.
bool isOnTheKeyboard(const char* name) {
  if (name == nullptr) return false;
  const std::string_view key = name;
  if (key.size() == 3 && key.starts_with("KP")) return '0' <= key[2] && key[2] <= '9';
  const std::array<std::string_view, 4> rows = {"AE", "AD", "AC", "AB"};
  const std::array<std::string_view, 26> single = {
      "TLDE", "BKSL", "LSGT", "SPCE", "LFSH", "RTSH", "LCTL", "LALT", "RALT",
      "CAPS", "NMLK", "MENU", "COMP", "RTRN", "BKSP", "LEFT", "RGHT", "UP",
      "DOWN", "HOME", "END",  "ESC",  "TAB",  "DELE", "LWIN", "HKTG"};
  return (key.size() == 4 && std::find(rows.begin(), rows.end(), key.substr(0, 2)) != rows.end()) ||
         std::find(single.begin(), single.end(), key) != single.end();
}

// Keys that only some keyboards have. Where a layout gives them no meaning, a program may.
bool isOnFewKeyboards(const char* name) {
  const std::string_view key = name;
  return key == "AE13" || key == "AB11" || key == "HKTG";
}

// People type with the rest of the keyboard.
bool isOfKeypad(xkb_keysym_t symbol) {
  return XKB_KEY_KP_Space <= symbol && symbol <= XKB_KEY_KP_Equal;
}

xkb_mod_mask_t maskOf(xkb_keymap* keymap, const char* name) {
  const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap, name);
  return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
}

int effort(const KeyStroke& stroke) {
  return (stroke.shift ? 1 : 0) + (stroke.thirdLevel ? 2 : 0);
}

}  // namespace

PhysicalKeyboard::PhysicalKeyboard(const XConnection& connection)
    : PhysicalKeyboard(connection, xkb_x11_get_core_keyboard_device_id(connection.get())) {}

PhysicalKeyboard::PhysicalKeyboard(const XConnection& connection, std::int32_t device) {
  const std::unique_ptr<xkb_context, Release> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
  const std::unique_ptr<xkb_keymap, Release> keymap(xkb_x11_keymap_new_from_device(
      context.get(), connection.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) throw std::runtime_error("the server gives no keymap");
  const std::unique_ptr<xkb_state, Release> state(
      xkb_x11_state_new_from_device(keymap.get(), connection.get(), device));
  if (!state) throw std::runtime_error("the server gives no keyboard state");
  const auto group = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);

  const auto last = xkb_keymap_max_keycode(keymap.get());
  for (auto key = xkb_keymap_min_keycode(keymap.get()); key <= last; ++key) {
    if (isOnTheKeyboard(xkb_keymap_key_get_name(keymap.get(), key))) {
      readKey(keymap.get(), key, group);
    }
  }
  std::stable_sort(m_entries.begin(), m_entries.end(), [](const Entry& left, const Entry& right) {
    return effort(left.stroke) < effort(right.stroke);
  });
  const auto keyOf = [this](xkb_keysym_t symbol) {
    const auto stroke = strokeForSymbol(symbol);
    return stroke ? stroke->key : xcb_keycode_t{0};
  };
  m_shiftKey = keyOf(XKB_KEY_Shift_L);
  m_thirdLevelKey = keyOf(XKB_KEY_ISO_Level3_Shift);
}

void PhysicalKeyboard::readKey(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group) {
  const auto groups = xkb_keymap_num_layouts_for_key(keymap, key);
  if (groups == 0) return;
  const auto inForce = group < groups ? group : 0;
  const xkb_mod_mask_t shift = maskOf(keymap, "Shift");
  const xkb_mod_mask_t third = maskOf(keymap, "Mod5");
  const auto levels = xkb_keymap_num_levels_for_key(keymap, key, inForce);
  for (xkb_level_index_t level = 0; level < levels; ++level) {
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(keymap, key, inForce, level, &symbols) != 1) continue;
    std::array<xkb_mod_mask_t, 32> masks{};
    const auto count =
        xkb_keymap_key_get_mods_for_level(keymap, key, inForce, level, masks.data(), masks.size());
    for (std::size_t index = 0; index < count; ++index) {
      if ((masks[index] & ~(shift | third)) != 0) continue;
      m_entries.push_back(
          {.stroke = {.key = static_cast<xcb_keycode_t>(key),
                      .shift = (masks[index] & shift) != 0,
                      .thirdLevel = (masks[index] & third) != 0},
           .symbol = symbols[0],
           .onEveryKeyboard = !isOnFewKeyboards(xkb_keymap_key_get_name(keymap, key))});
    }
  }
}

std::optional<KeyStroke> PhysicalKeyboard::strokeFor(char32_t character) const {
  if (character == U'\n') return strokeForSymbol(XKB_KEY_Return);
  const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
    return xkb_keysym_to_utf32(entry.symbol) == character && !isOfKeypad(entry.symbol);
  });
  return found == m_entries.end() ? std::nullopt : std::optional(found->stroke);
}

QString PhysicalKeyboard::letters(bool withShift) const {
  QString letters;
  for (const Entry& entry : m_entries) {
    const char32_t character = xkb_keysym_to_utf32(entry.symbol);
    if (!entry.onEveryKeyboard || entry.stroke.thirdLevel || (entry.stroke.shift && !withShift))
      continue;
    const QString letter = QString::fromUcs4(&character, 1);
    if (QChar::isLetter(character) && !letters.contains(letter)) letters += letter;
  }
  return letters;
}

std::optional<KeyStroke> PhysicalKeyboard::strokeForSymbol(xkb_keysym_t symbol) const {
  const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                  [&](const Entry& entry) { return entry.symbol == symbol; });
  return found == m_entries.end() ? std::nullopt : std::optional(found->stroke);
}

}  // namespace zarvy::e2e
