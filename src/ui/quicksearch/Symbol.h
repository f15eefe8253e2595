#pragma once

class QColor;
class QPainter;
class QRect;

namespace zarvy {

// The small pictures of the panel.
enum class Symbol { search, nothingFound, up, down };

// Draws `symbol` into `area` as the icon theme of the desktop has it, or as the program brings it
// where the theme lacks it. A picture of one colour is drawn in `color`, so that it is as legible
// as text in any palette.
void drawSymbol(QPainter& painter, const QRect& area, Symbol symbol, const QColor& color);

}  // namespace zarvy
