#include "e2e/harness/KeyboardLayout.h"

#include <array>
#include <stdexcept>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/InputDevices.h"
#include "e2e/harness/Xkb.h"

namespace zarvy::e2e {

namespace {

constexpr auto toolDeadline = std::chrono::seconds(20);

// Runs a program of the X distribution to its end and gives what it wrote.
std::string runTool(const ProcessSpecification& specification) {
  ChildProcess tool(specification);
  const auto status = tool.waitForExit(toolDeadline);
  if (!status || *status != ExitStatus{}) {
    throw std::runtime_error(specification.program + " failed");
  }
  // The output may still be on its way when the process has ended.
  static_cast<void>(tool.waitForLine([](const std::string&) { return false; }, toolDeadline));
  std::string output;
  for (const std::string& line : tool.outputLines()) output += line + "\n";
  return output;
}

std::string dumpSymbols(const XConnection& connection) {
  const xcb_setup_t* setup = xcb_get_setup(connection.get());
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto mapping = owned(xcb_get_keyboard_mapping_reply(
      connection.get(), xcb_get_keyboard_mapping(connection.get(), setup->min_keycode, count),
      nullptr));
  const auto modifiers = owned(xcb_get_modifier_mapping_reply(
      connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr));
  if (!mapping || !modifiers) throw std::runtime_error("the server gives no keyboard mapping");

  std::string text;
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  for (int key = 0; key < count; ++key) {
    std::string line;
    std::string gap;  // how many symbols a key has room for is no property of the mapping
    for (int index = 0; index < mapping->keysyms_per_keycode; ++index) {
      const xcb_keysym_t symbol = symbols[key * mapping->keysyms_per_keycode + index];
      gap.append(" ").append(std::to_string(symbol));
      if (symbol != XCB_NO_SYMBOL) line += std::exchange(gap, {});
    }
    text += std::to_string(setup->min_keycode + key) + ":" + line + "\n";
  }
  const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(modifiers.get());
  const int codeCount = xcb_get_modifier_mapping_keycodes_length(modifiers.get());
  for (int index = 0; index < codeCount; ++index) {
    if (codes[index] == 0) continue;
    text += "modifier " + std::to_string(index / modifiers->keycodes_per_modifier) + ": " +
            std::to_string(codes[index]) + "\n";
  }
  return text;
}

}  // namespace

void setKeyboardLayout(const KeyboardLayout& layout, const Environment& environment) {
  std::vector<std::string> arguments = {"-rules",  "evdev",        "-model",  "pc105",
                                        "-layout", layout.layouts, "-option", ""};
  if (!layout.options.empty()) {
    arguments.emplace_back("-option");
    arguments.push_back(layout.options);
  }
  static_cast<void>(runTool({.program = "setxkbmap",
                             .arguments = arguments,
                             .environment = environment,
                             .errorFile = {},
                             .descriptors = {}}));
}

void lockGroup(const XConnection& connection, std::uint8_t group) {
  xcb_xkb_latch_lock_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
  connection.synchronise();
}

void setAutorepeat(const XConnection& connection, std::uint16_t delayMilliseconds,
                   std::uint16_t intervalMilliseconds) {
  const std::array<std::uint8_t, 32> perKeyRepeat{};
  for (const std::uint16_t keyboard : keyboardIds(connection)) {
    xcb_xkb_set_controls(connection.get(), keyboard, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         XCB_XKB_BOOL_CTRL_REPEAT_KEYS, delayMilliseconds, intervalMilliseconds, 0,
                         0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, perKeyRepeat.data());
  }
  connection.synchronise();
}

MappingDump dumpMapping(const XConnection& connection, const Environment& environment) {
  return {.symbols = dumpSymbols(connection),
          .keyboard = runTool({.program = "xkbcomp",
                               .arguments = {"-xkb", "-w0", environment.at("DISPLAY"), "-"},
                               .environment = environment,
                               .errorFile = {},
                               .descriptors = {}})};
}

KeyboardState keyboardState(const XConnection& connection) {
  const auto state = owned(xcb_xkb_get_state_reply(
      connection.get(), xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
  if (!state) throw std::runtime_error("the server does not tell its keyboard's state");
  KeyboardState result{.heldModifiers = static_cast<std::uint32_t>(state->baseMods) |
                                        static_cast<std::uint32_t>(state->latchedMods),
                       .lockedModifiers = state->lockedMods,
                       .lockedGroup = state->lockedGroup,
                       .heldKeys = {}};
  for (const std::uint8_t code : heldKeys(connection)) {
    if (!result.heldKeys.empty()) result.heldKeys += ' ';
    result.heldKeys += std::to_string(code);
  }
  return result;
}

}  // namespace zarvy::e2e
