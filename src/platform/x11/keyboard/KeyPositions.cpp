#include "platform/x11/keyboard/KeyPositions.h"

#include <algorithm>
#include <array>

namespace zarvy::x11 {

namespace {

struct Position {
  std::string_view xkbName;
  quint16 virtualKey;
};

// Row by row as on a keyboard: E is the digit row, D, C and B the letter rows, then the rest.
constexpr std::array positions{
    Position{"TLDE", 50},  Position{"AE01", 18},  Position{"AE02", 19},  Position{"AE03", 20},
    Position{"AE04", 21},  Position{"AE05", 23},  Position{"AE06", 22},  Position{"AE07", 26},
    Position{"AE08", 28},  Position{"AE09", 25},  Position{"AE10", 29},  Position{"AE11", 27},
    Position{"AE12", 24},  Position{"AE13", 93},  Position{"BKSP", 51},

    Position{"TAB", 48},   Position{"AD01", 12},  Position{"AD02", 13},  Position{"AD03", 14},
    Position{"AD04", 15},  Position{"AD05", 17},  Position{"AD06", 16},  Position{"AD07", 32},
    Position{"AD08", 34},  Position{"AD09", 31},  Position{"AD10", 35},  Position{"AD11", 33},
    Position{"AD12", 30},  Position{"BKSL", 42},  Position{"AC12", 42},

    Position{"CAPS", 57},  Position{"AC01", 0},   Position{"AC02", 1},   Position{"AC03", 2},
    Position{"AC04", 3},   Position{"AC05", 5},   Position{"AC06", 4},   Position{"AC07", 38},
    Position{"AC08", 40},  Position{"AC09", 37},  Position{"AC10", 41},  Position{"AC11", 39},
    Position{"RTRN", 36},

    Position{"LFSH", 56},  Position{"LSGT", 10},  Position{"AB01", 6},   Position{"AB02", 7},
    Position{"AB03", 8},   Position{"AB04", 9},   Position{"AB05", 11},  Position{"AB06", 45},
    Position{"AB07", 46},  Position{"AB08", 43},  Position{"AB09", 47},  Position{"AB10", 44},
    Position{"AB11", 94},  Position{"RTSH", 60},

    Position{"LCTL", 59},  Position{"LWIN", 55},  Position{"LALT", 58},  Position{"SPCE", 49},
    Position{"RALT", 61},  Position{"RWIN", 54},  Position{"COMP", 110}, Position{"MENU", 110},
    Position{"RCTL", 62},  Position{"MUHE", 102}, Position{"HENK", 104},

    Position{"ESC", 53},   Position{"FK01", 122}, Position{"FK02", 120}, Position{"FK03", 99},
    Position{"FK04", 118}, Position{"FK05", 96},  Position{"FK06", 97},  Position{"FK07", 98},
    Position{"FK08", 100}, Position{"FK09", 101}, Position{"FK10", 109}, Position{"FK11", 103},
    Position{"FK12", 111}, Position{"FK13", 105}, Position{"FK14", 107}, Position{"FK15", 113},
    Position{"FK16", 106}, Position{"FK17", 64},  Position{"FK18", 79},  Position{"FK19", 80},
    Position{"FK20", 90},

    Position{"INS", 114},  Position{"HOME", 115}, Position{"PGUP", 116}, Position{"DELE", 117},
    Position{"END", 119},  Position{"PGDN", 121}, Position{"LEFT", 123}, Position{"RGHT", 124},
    Position{"DOWN", 125}, Position{"UP", 126},

    Position{"NMLK", 71},  Position{"KPDV", 75},  Position{"KPMU", 67},  Position{"KPSU", 78},
    Position{"KPAD", 69},  Position{"KPEN", 76},  Position{"KPDL", 65},  Position{"KPEQ", 81},
    Position{"KP0", 82},   Position{"KP1", 83},   Position{"KP2", 84},   Position{"KP3", 85},
    Position{"KP4", 86},   Position{"KP5", 87},   Position{"KP6", 88},   Position{"KP7", 89},
    Position{"KP8", 91},   Position{"KP9", 92},   Position{"JPCM", 95},

    Position{"MUTE", 74},  Position{"VOL-", 73},  Position{"VOL+", 72},
};

}  // namespace

std::optional<quint16> virtualKeyOfPosition(std::string_view xkbKeyName) {
  const auto found =
      std::find_if(positions.begin(), positions.end(),
                   [&](const Position& position) { return position.xkbName == xkbKeyName; });
  if (found == positions.end()) return std::nullopt;
  return found->virtualKey;
}

KeyRarity rarityOfPosition(std::string_view xkbKeyName) {
  if (xkbKeyName.empty()) return KeyRarity::nowhere;
  const std::string_view rest = xkbKeyName.substr(1);
  const bool isNumbered = xkbKeyName.front() == 'I' && !rest.empty() &&
                          rest.find_first_not_of("0123456789") == std::string_view::npos;
  return isNumbered ? KeyRarity::exceptional : KeyRarity::somewhere;
}

}  // namespace zarvy::x11
