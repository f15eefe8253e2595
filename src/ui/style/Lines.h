#pragma once

#include <QRect>
#include <QRectF>

class QColor;
class QPainter;

// Thin lines that lie on whole pixels of the screen, at a scale of 150 % too: a line that covers
// half a pixel is smeared. All sizes are in logical pixels.
namespace zarvy {

// Of a line that is one pixel wide, or as many whole ones of the screen as that has room for.
[[nodiscard]] double lineWidth(const QPainter& painter);

// The middle of a line of that width around `area`, on its inside.
[[nodiscard]] QRectF outlineWithin(const QPainter& painter, const QRect& area);

// A line of that width along the top of `area`, or along its left side.
void drawRule(QPainter& painter, const QRect& area, const QColor& color);
void drawUprightRule(QPainter& painter, const QRect& area, const QColor& color);

}  // namespace zarvy
