#include "ui/controls/RoundedBox.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr double boxRadius = 4;
constexpr int strokeWidth = 1;  // at most, without the keyboard
constexpr double focusWidth = 2;

}  // namespace

RoundedBox::RoundedBox(QWidget& content, const Look& look, QWidget* parent)
    : QWidget(parent), m_content(content), m_look(look) {
  auto* const layout = new QVBoxLayout(this);
  const int margin = look.padding + strokeWidth;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->addWidget(&content);
  content.installEventFilter(this);
}

bool RoundedBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  return QWidget::eventFilter(watched, event);
}

void RoundedBox::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(palette().color(m_look.background));
  if (m_content.hasFocus()) {
    constexpr double inset = focusWidth / 2;
    painter.setPen(QPen(focusColor(palette()), focusWidth));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), boxRadius,
                            boxRadius);
    return;
  }
  const QColor line = m_look.isInput ? outlineColor(palette()) : separatorColor(palette());
  painter.setPen(QPen(line, lineWidth(painter)));
  painter.drawRoundedRect(outlineWithin(painter, rect()), boxRadius, boxRadius);
}

}  // namespace zarvy
