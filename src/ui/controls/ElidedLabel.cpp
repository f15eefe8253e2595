#include "ui/controls/ElidedLabel.h"

#include <cmath>

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include "ui/style/OneLine.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent)
    : QLabel(parent), m_text(text), m_shown(oneLine(text)) {
  setTextFormat(Qt::PlainText);
  setText(QString(m_shown).replace(u"&"_s, u"&&"_s));
  setAccessibleName(text);
}

QSize ElidedLabel::sizeHint() const {
  // With room for what rounding takes away from a text that just fits.
  const double width = QFontMetricsF(font()).horizontalAdvance(m_shown);
  return {static_cast<int>(std::ceil(width)) + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  showWholeText(*static_cast<QHelpEvent*>(event), *this, m_text, fitting() != m_text);
  return true;
}

QString ElidedLabel::fitting() const {
  return fontMetrics().elidedText(m_shown, Qt::ElideRight, width());
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(
      palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, fitting());
}

}  // namespace zarvy
