#include "ui/symbols/Symbol.h"

#include <array>
#include <cstddef>

namespace zarvy {
namespace {

// A symbol whose colour says something, or that stands among others of its kind, is the program's
// own: a theme's is often of several colours, and has seldom all of a kind.
constexpr std::array symbols{
    SymbolRow{Symbol::arrowDown, u"arrow.down", u"go-down"},
    SymbolRow{Symbol::arrowRight, u"arrow.right", u"go-next"},
    SymbolRow{Symbol::arrowTriangle2Circlepath, u"arrow.triangle.2.circlepath", u""},
    SymbolRow{Symbol::arrowUp, u"arrow.up", u"go-up"},
    SymbolRow{Symbol::calendar, u"calendar", u""},
    SymbolRow{Symbol::calendarBadgeClock, u"calendar.badge.clock", u""},
    SymbolRow{Symbol::calendarBadgeMinus, u"calendar.badge.minus", u""},
    SymbolRow{Symbol::calendarBadgePlus, u"calendar.badge.plus", u""},
    SymbolRow{Symbol::characterCursorIbeam, u"character.cursor.ibeam", u""},
    SymbolRow{Symbol::checkmark, u"checkmark", u""},
    SymbolRow{Symbol::checkmarkCircle, u"checkmark.circle", u""},
    SymbolRow{Symbol::checkmarkCircleFill, u"checkmark.circle.fill", u""},
    SymbolRow{Symbol::checkmarkSquare, u"checkmark.square", u""},
    SymbolRow{Symbol::chevronLeft, u"chevron.left", u"go-previous"},
    SymbolRow{Symbol::chevronLeftForwardslashChevronRight,
              u"chevron.left.forwardslash.chevron.right", u""},
    SymbolRow{Symbol::circleFill, u"circle.fill", u""},
    SymbolRow{Symbol::clock, u"clock", u""},
    SymbolRow{Symbol::clockBadgePlus, u"clock.badge.plus", u""},
    SymbolRow{Symbol::clockFill, u"clock.fill", u""},
    SymbolRow{Symbol::cursorRays, u"cursor.rays", u""},
    SymbolRow{Symbol::docOnClipboard, u"doc.on.clipboard", u"edit-paste"},
    SymbolRow{Symbol::docTextMagnifyingglass, u"doc.text.magnifyingglass", u"document-preview"},
    SymbolRow{Symbol::exclamationmarkBubble, u"exclamationmark.bubble", u""},
    SymbolRow{Symbol::exclamationmarkCircleFill, u"exclamationmark.circle.fill", u""},
    SymbolRow{Symbol::exclamationmarkTriangle, u"exclamationmark.triangle", u"dialog-warning"},
    SymbolRow{Symbol::exclamationmarkTriangleFill, u"exclamationmark.triangle.fill", u""},
    SymbolRow{Symbol::folderBadgePlus, u"folder.badge.plus", u"folder-new"},
    SymbolRow{Symbol::folderFill, u"folder.fill", u""},
    SymbolRow{Symbol::gearshape, u"gearshape", u""},
    SymbolRow{Symbol::globe, u"globe", u""},
    SymbolRow{Symbol::infoCircleFill, u"info.circle.fill", u""},
    SymbolRow{Symbol::keyboard, u"keyboard", u""},
    SymbolRow{Symbol::listBullet, u"list.bullet", u""},
    SymbolRow{Symbol::lockFill, u"lock.fill", u"object-locked"},
    SymbolRow{Symbol::magnifyingglass, u"magnifyingglass", u"edit-find"},
    SymbolRow{Symbol::number, u"number", u""},
    SymbolRow{Symbol::personTextRectangle, u"person.text.rectangle", u""},
    SymbolRow{Symbol::plus, u"plus", u"list-add"},
    SymbolRow{Symbol::plusCircle, u"plus.circle", u""},
    SymbolRow{Symbol::plusCircleFill, u"plus.circle.fill", u""},
    SymbolRow{Symbol::questionmarkCircle, u"questionmark.circle", u""},
    SymbolRow{Symbol::sidebarLeading, u"sidebar.leading", u""},
    SymbolRow{Symbol::squareOnSquare, u"square.on.square", u""},
    SymbolRow{Symbol::terminal, u"terminal", u"utilities-terminal"},
    SymbolRow{Symbol::textAlignleft, u"text.alignleft", u"format-justify-left"},
    SymbolRow{Symbol::textBubble, u"text.bubble", u""},
    SymbolRow{Symbol::textBubbleFill, u"text.bubble.fill", u""},
    SymbolRow{Symbol::textformat, u"textformat", u""},
    SymbolRow{Symbol::textformatSizeLarger, u"textformat.size.larger", u""},
    SymbolRow{Symbol::textformatSizeSmaller, u"textformat.size.smaller", u""},
    SymbolRow{Symbol::trash, u"trash", u"edit-delete"},
    SymbolRow{Symbol::trayFull, u"tray.full", u""},
    SymbolRow{Symbol::xmarkCircleFill, u"xmark.circle.fill", u""},
    SymbolRow{Symbol::xmarkIcloud, u"xmark.icloud", u""},
};

constexpr bool areInTheirOrder() {
  for (std::size_t index = 0; index < symbols.size(); ++index) {
    if (static_cast<std::size_t>(symbols[index].symbol) != index) return false;
  }
  return symbols.back().symbol == Symbol::xmarkIcloud;
}
static_assert(areInTheirOrder());

}  // namespace

std::span<const SymbolRow> allSymbols() {
  return symbols;
}

const SymbolRow& rowOf(Symbol symbol) {
  return symbols.at(static_cast<std::size_t>(symbol));
}

}  // namespace zarvy
