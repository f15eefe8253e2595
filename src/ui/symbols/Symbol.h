#pragma once

#include <span>

#include <QStringView>

namespace zarvy {

// The small pictures of all screens, by what they show.
enum class Symbol {
  arrowDown,
  arrowRight,
  arrowTriangle2Circlepath,
  arrowUp,
  calendar,
  calendarBadgeClock,
  calendarBadgeMinus,
  calendarBadgePlus,
  characterCursorIbeam,
  checkmark,
  checkmarkCircle,
  checkmarkCircleFill,
  checkmarkSquare,
  chevronLeft,
  chevronLeftForwardslashChevronRight,
  circleFill,
  clock,
  clockBadgePlus,
  clockFill,
  cursorRays,
  docOnClipboard,
  docTextMagnifyingglass,
  exclamationmarkBubble,
  exclamationmarkCircleFill,
  exclamationmarkTriangle,
  exclamationmarkTriangleFill,
  folderBadgePlus,
  folderFill,
  gearshape,
  globe,
  infoCircleFill,
  keyboard,
  listBullet,
  lockFill,
  magnifyingglass,
  number,
  personTextRectangle,
  plus,
  plusCircle,
  plusCircleFill,
  questionmarkCircle,
  sidebarLeading,
  squareOnSquare,
  terminal,
  textAlignleft,
  textBubble,
  textBubbleFill,
  textformat,
  textformatSizeLarger,
  textformatSizeSmaller,
  trash,
  trayFull,
  xmarkCircleFill,
  xmarkIcloud,
};

struct SymbolRow {
  Symbol symbol = {};
  QStringView name;       // of the program's own picture
  QStringView themeName;  // by the icon naming of the desktops; empty where none fits
};

// One row a symbol, in their order.
[[nodiscard]] std::span<const SymbolRow> allSymbols();
[[nodiscard]] const SymbolRow& rowOf(Symbol symbol);

}  // namespace zarvy
