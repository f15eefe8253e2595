#include "ui/fillin/ElidedLabel.h"

#include <cmath>

#include <QFontMetrics>
#include <QPainter>

#include "ui/style/OneLine.h"

namespace zarvy {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent)
    : QLabel(parent), m_shown(oneLine(text)) {
  setTextFormat(Qt::PlainText);
  setText(m_shown);
  setAccessibleName(text);
  setToolTip(plainToolTip(text));
}

QSize ElidedLabel::sizeHint() const {
  // With room for what rounding takes away from a text that just fits.
  const double width = QFontMetricsF(font()).horizontalAdvance(m_shown);
  return {static_cast<int>(std::ceil(width)) + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(
      palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  const QString shown = fontMetrics().elidedText(m_shown, Qt::ElideRight, width());
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

}  // namespace zarvy
