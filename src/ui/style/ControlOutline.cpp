#include "ui/style/ControlOutline.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr double radius = 2;
constexpr double focusWidth = 2;
constexpr double insetOnAccent = 3;  // of the ring that shows the focus

bool isOfOwnStyle(const QWidget& control) {
  return control.style()->name() == QLatin1String("fusion");
}

bool isCheckBox(const QWidget& control) {
  return qobject_cast<const QCheckBox*>(&control) != nullptr;
}

bool isButton(const QWidget& control) {
  return qobject_cast<const QAbstractButton*>(&control) && !isCheckBox(control);
}

// What has the colour of the accent itself cannot show it.
bool isOnAccent(const QWidget& control) {
  const QPalette& own = control.palette();
  const QPalette& around = control.parentWidget()->palette();
  return isButton(control) &&
         activeColor(own, QPalette::Button) != activeColor(around, QPalette::Button);
}

// On the ground of the control, too: Qt draws a dark button up to this much lighter than its
// colour.
QColor ringColor(const QWidget& control) {
  constexpr int lightening = 190;  // percent
  const QPalette& palette = control.palette();
  const QColor ring = focusColor(palette);
  const bool isRaised = isButton(control) || qobject_cast<const QComboBox*>(&control);
  if (!isRaised) return ring;
  return legible(ring, activeColor(palette, QPalette::Button).lighter(lightening),
                 activeColor(palette, QPalette::ButtonText), lineContrast);
}

}  // namespace

ControlOutline::ControlOutline(QWidget& control) : QObject(&control), m_control(control) {
  control.installEventFilter(this);
}

// On top of what the control has drawn of itself.
bool ControlOutline::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) m_control.update();
  if (event->type() != QEvent::Paint || m_isPainting || !isOfOwnStyle(m_control)) return false;
  m_isPainting = true;
  watched->event(event);
  m_isPainting = false;
  QPainter painter(&m_control);
  draw(painter);
  return true;
}

void ControlOutline::draw(QPainter& painter) const {
  if (!m_control.isEnabled()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  const QPalette& palette = m_control.palette();
  if (!m_control.hasFocus()) {
    painter.setPen(QPen(outlineColor(palette), lineWidth(painter)));
    painter.drawRoundedRect(outlineWithin(painter, area()), radius, radius);
    return;
  }
  const bool onAccent = isOnAccent(m_control);
  const double inset = focusWidth / 2 + (onAccent ? insetOnAccent : 0);
  painter.setPen(QPen(onAccent ? activeColor(palette, QPalette::ButtonText) : ringColor(m_control),
                      focusWidth));
  painter.drawRoundedRect(QRectF(area()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

// Of a check box only the box.
QRect ControlOutline::area() const {
  if (!isCheckBox(m_control)) return m_control.rect();
  QStyleOptionButton option;
  option.initFrom(&m_control);
  return m_control.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &m_control);
}

}  // namespace zarvy
