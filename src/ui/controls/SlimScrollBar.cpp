#include "ui/controls/SlimScrollBar.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr int scrollBarExtent = 12;
constexpr int handleMargin = 3;

}  // namespace

SlimScrollBar::SlimScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  setAttribute(Qt::WA_Hover);  // repainted when the pointer comes and goes
}

QSize SlimScrollBar::sizeHint() const {
  return {scrollBarExtent, QScrollBar::sizeHint().height()};
}

// Where the style has the handle, the pointer finds it.
void SlimScrollBar::paintEvent(QPaintEvent* /*event*/) {
  if (minimum() == maximum()) return;
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect handle =
      style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  const QRectF shown(handleMargin, handle.top(), width() - 2 * handleMargin, handle.height());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(withOpacity(palette().color(QPalette::WindowText),
                               underMouse() || isSliderDown() ? 0.5 : 0.3));
  painter.drawRoundedRect(shown, shown.width() / 2, shown.width() / 2);
}

}  // namespace zarvy
