#include "ui/controls/FolderLabel.h"

#include <cmath>

#include <QFontMetrics>
#include <QPainter>

#include "ui/style/Fonts.h"
#include "ui/style/Ink.h"
#include "ui/style/OneLine.h"

namespace zarvy {
namespace {

constexpr int labelPaddingX = 6;
constexpr int labelPaddingY = 2;
constexpr double labelRadius = 4;
constexpr double labelOpacity = 0.15;

}  // namespace

QSize FolderLabel::sizeHint(const QFont& font) const {
  const QFont own = styledFont(font, lettering::caption);
  const double width = QFontMetricsF(own).horizontalAdvance(oneLine(name));
  return {static_cast<int>(std::ceil(width)) + 1 + 2 * labelPaddingX,
          QFontMetrics(own).height() + 2 * labelPaddingY};
}

void FolderLabel::draw(QPainter& painter, const QRect& area, const QFont& font,
                       const QPalette& palette, const QColor& ground) const {
  const QColor own = systemColor(color, palette);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(withOpacity(own, labelOpacity));
  painter.drawRoundedRect(area, labelRadius, labelRadius);
  painter.setPen(inkOn(color, palette, blended(ground, own, labelOpacity)));
  painter.setFont(styledFont(font, lettering::caption));
  const QRect text = area.adjusted(labelPaddingX, 0, -labelPaddingX, 0);
  painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(oneLine(name), Qt::ElideRight, text.width()));
}

void drawColorDot(QPainter& painter, const QRectF& area, SystemColor color,
                  const QPalette& palette) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(systemColor(color, palette));
  painter.drawEllipse(area);
}

}  // namespace zarvy
