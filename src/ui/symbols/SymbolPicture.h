#pragma once

#include "ui/symbols/Symbol.h"

class QColor;
class QPainter;
class QPixmap;
class QRect;
class QSize;

namespace zarvy {

// `symbol` as the icon theme of the desktop has it, or as the program brings it where the theme
// lacks it. A picture of one colour is in `color`, so that it is as legible as text in any palette.
// `size` in logical pixels of `ratio` pixels each; a theme may have smaller pictures only. Kept for
// the next time. Main thread.
[[nodiscard]] QPixmap symbolPicture(Symbol symbol, const QColor& color, const QSize& size,
                                    double ratio);

// Draws it into the middle of `area`, on whole pixels.
void drawSymbol(QPainter& painter, const QRect& area, Symbol symbol, const QColor& color);

}  // namespace zarvy
