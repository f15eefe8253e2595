#pragma once

#include <QColor>

#include "core/model/FolderColor.h"

namespace zarvy {

// The colour that stands for `color` on the screen, in a light and in a dark palette alike.
[[nodiscard]] inline QColor tintOf(FolderColor color) {
  switch (color) {
    case FolderColor::red:
      return {0xE5, 0x48, 0x4D};
    case FolderColor::orange:
      return {0xE8, 0x7A, 0x1D};
    case FolderColor::yellow:
      return {0xD9, 0xA4, 0x06};
    case FolderColor::green:
      return {0x2F, 0xA8, 0x4F};
    case FolderColor::blue:
      return {0x2F, 0x7F, 0xE0};
    case FolderColor::purple:
      return {0x9A, 0x5B, 0xD6};
    case FolderColor::pink:
      return {0xE2, 0x5C, 0x9A};
    case FolderColor::gray:
      break;
  }
  return {0x8A, 0x8F, 0x98};
}

}  // namespace zarvy
