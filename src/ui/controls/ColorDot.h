#pragma once

#include <QPainter>

#include "ui/style/SystemColors.h"

namespace zarvy {

// A round spot of `color` that fills `area`.
inline void drawColorDot(QPainter& painter, const QRectF& area, SystemColor color,
                         const QPalette& palette) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(systemColor(color, palette));
  painter.drawEllipse(area);
}

}  // namespace zarvy
