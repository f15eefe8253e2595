#include "ui/controls/CloseButton.h"

#include <QPainter>

#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int buttonExtent = 20;
constexpr double crossExtent = 8;
constexpr double crossWidth = 1.25;

}  // namespace

CloseButton::CloseButton(QWidget* parent) : QAbstractButton(parent) {
  setAccessibleName(u"Close"_s);
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_Hover);  // repainted when the pointer comes and goes
  setFixedSize(buttonExtent, buttonExtent);
}

void CloseButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (underMouse()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(palette().color(QPalette::WindowText), isDown() ? 0.22 : 0.12));
    painter.drawEllipse(rect());
  }
  QRectF cross(0, 0, crossExtent, crossExtent);
  cross.moveCenter(QRectF(rect()).center());
  const QColor resting = tertiaryColor(palette(), activeColor(palette(), QPalette::Window));
  const QColor color = underMouse() ? activeColor(palette(), QPalette::WindowText) : resting;
  painter.setPen(QPen(color, crossWidth, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(cross.topLeft(), cross.bottomRight());
  painter.drawLine(cross.bottomLeft(), cross.topRight());
}

}  // namespace zarvy
