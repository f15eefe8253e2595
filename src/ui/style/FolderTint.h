#pragma once

#include "core/model/FolderColor.h"
#include "ui/style/SystemColors.h"

namespace zarvy {

// The colour that stands for `color` on the screen.
[[nodiscard]] inline SystemColor tintOf(FolderColor color) {
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
