#include "ui/style/Lines.h"

#include <algorithm>
#include <cmath>

#include <QColor>
#include <QPainter>
#include <QTransform>

namespace zarvy {
namespace {

// `area` in pixels of the screen, only whole ones of it.
QRectF wholePixels(const QPainter& painter, const QRect& area) {
  constexpr double tolerance = 0.01;  // for what floating point makes of a whole one
  const QRectF exact = painter.deviceTransform().mapRect(QRectF(area));
  return {QPointF(std::ceil(exact.left() - tolerance), std::ceil(exact.top() - tolerance)),
          QPointF(std::floor(exact.right() + tolerance), std::floor(exact.bottom() + tolerance))};
}

double scaleOf(const QPainter& painter) {
  return painter.deviceTransform().m22();
}

double linePixels(const QPainter& painter) {
  return std::max(1.0, std::floor(scaleOf(painter)));
}

}  // namespace

double lineWidth(const QPainter& painter) {
  return linePixels(painter) / scaleOf(painter);
}

QRectF outlineWithin(const QPainter& painter, const QRect& area) {
  const double half = linePixels(painter) / 2;
  const QRectF middle = wholePixels(painter, area).adjusted(half, half, -half, -half);
  return painter.deviceTransform().inverted().mapRect(middle);
}

void drawRule(QPainter& painter, const QRect& area, const QColor& color) {
  QRectF line = wholePixels(painter, area);
  line.setHeight(linePixels(painter));
  painter.fillRect(painter.deviceTransform().inverted().mapRect(line), color);
}

void drawUprightRule(QPainter& painter, const QRect& area, const QColor& color) {
  QRectF line = wholePixels(painter, area);
  line.setWidth(linePixels(painter));
  painter.fillRect(painter.deviceTransform().inverted().mapRect(line), color);
}

}  // namespace zarvy
