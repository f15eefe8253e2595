#pragma once

#include <QColor>

#include "core/model/FolderColor.h"

class QPalette;

namespace zarvy {

// The colours that have a name on the screens.
enum class SystemColor {
  red,
  orange,
  yellow,
  green,
  mint,
  teal,
  cyan,
  blue,
  indigo,
  purple,
  pink,
  brown,
  gray,
};

inline constexpr int systemColorCount = static_cast<int>(SystemColor::gray) + 1;

// What a colour says, on all screens alike.
namespace meaning {

inline constexpr SystemColor required = SystemColor::red;    // may not stay blank
inline constexpr SystemColor success = SystemColor::green;   // granted, done
inline constexpr SystemColor warning = SystemColor::yellow;  // may be meant so
inline constexpr SystemColor failure = SystemColor::red;     // went wrong, or takes something away
inline constexpr SystemColor chosen = SystemColor::blue;     // the mark of what is selected
inline constexpr SystemColor days = SystemColor::blue;       // the bars of the two charts
inline constexpr SystemColor hours = SystemColor::orange;

}  // namespace meaning

// For areas: the circle of a folder, the bar of a chart. Text and thin marks in it want inkOn().
[[nodiscard]] QColor systemColor(SystemColor color, const QPalette& palette);

// The colour that stands for `color` on the screen.
[[nodiscard]] SystemColor tintOf(FolderColor color);

}  // namespace zarvy
