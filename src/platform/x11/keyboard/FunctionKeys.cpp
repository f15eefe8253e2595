#include "platform/x11/keyboard/FunctionKeys.h"

#include <algorithm>
#include <array>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/VirtualKey.h"

namespace zarvy::x11 {

namespace {

struct Function {
  xkb_keysym_t symbol;
  quint16 virtualKey;
};

constexpr std::array functions{
    Function{XKB_KEY_BackSpace, virtualkey::deleteBackward},
    Function{XKB_KEY_Delete, 117},
    Function{XKB_KEY_Return, virtualkey::returnKey},
    Function{XKB_KEY_Tab, virtualkey::tab},
    Function{XKB_KEY_ISO_Left_Tab, virtualkey::tab},
    Function{XKB_KEY_Escape, virtualkey::escape},
    Function{XKB_KEY_Left, virtualkey::leftArrow},
    Function{XKB_KEY_Right, virtualkey::rightArrow},
    Function{XKB_KEY_Down, virtualkey::downArrow},
    Function{XKB_KEY_Up, virtualkey::upArrow},
};

constexpr std::array keypadArrows{
    Function{XKB_KEY_KP_Left, virtualkey::leftArrow},
    Function{XKB_KEY_KP_Right, virtualkey::rightArrow},
    Function{XKB_KEY_KP_Down, virtualkey::downArrow},
    Function{XKB_KEY_KP_Up, virtualkey::upArrow},
};

template <typename Table>
std::optional<quint16> findIn(const Table& table, xkb_keysym_t symbol) {
  const auto found = std::find_if(table.begin(), table.end(), [&](const Function& function) {
    return function.symbol == symbol;
  });
  if (found == table.end()) return std::nullopt;
  return found->virtualKey;
}

}  // namespace

std::optional<quint16> functionOfSymbol(xkb_keysym_t symbol) {
  return findIn(functions, symbol);
}

std::optional<quint16> keypadArrow(xkb_keysym_t symbol) {
  return findIn(keypadArrows, symbol);
}

bool isFunction(quint16 virtualKey) {
  return std::any_of(functions.begin(), functions.end(),
                     [&](const Function& function) { return function.virtualKey == virtualKey; });
}

}  // namespace zarvy::x11
