#include "ui/style/SystemColors.h"

#include <array>
#include <cstddef>

#include <QPalette>

#include "ui/style/Tones.h"

namespace zarvy {
namespace {

struct SystemColorRow {
  SystemColor color;
  QRgb light;
  QRgb dark;
};

// Folders have had theirs from the beginning, chosen for both.
constexpr std::array<SystemColorRow, systemColorCount> systemColors{{
    {SystemColor::red, 0xFFE5484D, 0xFFE5484D},
    {SystemColor::orange, 0xFFE87A1D, 0xFFE87A1D},
    {SystemColor::yellow, 0xFFD9A406, 0xFFD9A406},
    {SystemColor::green, 0xFF2FA84F, 0xFF2FA84F},
    {SystemColor::mint, 0xFF12A594, 0xFF5EDCC5},
    {SystemColor::teal, 0xFF0E8C9C, 0xFF3FB8C6},
    {SystemColor::cyan, 0xFF0A8FC7, 0xFF63C8F2},
    {SystemColor::blue, 0xFF2F7FE0, 0xFF2F7FE0},
    {SystemColor::indigo, 0xFF5A5BD6, 0xFF8385F2},
    {SystemColor::purple, 0xFF9A5BD6, 0xFF9A5BD6},
    {SystemColor::pink, 0xFFE25C9A, 0xFFE25C9A},
    {SystemColor::brown, 0xFF99714D, 0xFFB5906C},
    {SystemColor::gray, 0xFF8A8F98, 0xFF8A8F98},
}};

constexpr bool isInOrder() {
  for (std::size_t index = 0; index < systemColors.size(); ++index) {
    if (static_cast<std::size_t>(systemColors[index].color) != index) return false;
  }
  return true;
}
static_assert(isInOrder());

}  // namespace

QColor systemColor(SystemColor color, const QPalette& palette) {
  const SystemColorRow& row = systemColors.at(static_cast<std::size_t>(color));
  return QColor::fromRgb(isDark(palette) ? row.dark : row.light);
}

SystemColor tintOf(FolderColor color) {
  switch (color) {
    case FolderColor::red:
      return SystemColor::red;
    case FolderColor::orange:
      return SystemColor::orange;
    case FolderColor::yellow:
      return SystemColor::yellow;
    case FolderColor::green:
      return SystemColor::green;
    case FolderColor::blue:
      return SystemColor::blue;
    case FolderColor::purple:
      return SystemColor::purple;
    case FolderColor::pink:
      return SystemColor::pink;
    case FolderColor::gray:
      break;
  }
  return SystemColor::gray;
}

}  // namespace zarvy
