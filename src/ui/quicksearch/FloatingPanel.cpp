#include "ui/quicksearch/FloatingPanel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/controls/CloseButton.h"
#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QSize panelSize(600, 400);
constexpr int stripHeight = 30;
constexpr int stripPadding = 8;
constexpr double panelRadius = 12;
constexpr double opacity = 0.975;  // what is behind is not blurred, and text is to be read on it

}  // namespace

FloatingPanel::FloatingPanel(std::unique_ptr<QWidget> content, bool isTranslucent) {
  setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
  setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
  setWindowRole(u"quick-search"_s);
  setAccessibleName(u"Quick Search"_s);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeTopStrip());
  column->addWidget(content.release(), 1);
  setFixedSize(panelSize);
}

QWidget* FloatingPanel::makeTopStrip() {
  auto* const strip = new QWidget(this);
  strip->setFixedHeight(stripHeight);
  auto* const line = new QHBoxLayout(strip);
  line->setContentsMargins(stripPadding, 0, stripPadding, 0);
  line->addStretch(1);
  auto* const button = new CloseButton(strip);
  connect(button, &QAbstractButton::clicked, this, &QWidget::close);
  line->addWidget(button);
  return strip;
}

void FloatingPanel::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) m_isBeingMoved = false;
  Panel::changeEvent(event);
}

bool FloatingPanel::startMove() {
  m_isBeingMoved = Panel::startMove();
  return m_isBeingMoved;
}

void FloatingPanel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const bool isTranslucent = testAttribute(Qt::WA_TranslucentBackground);
  const QRectF outline = outlineWithin(painter, rect());
  const QColor window = palette().color(QPalette::Window);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(separatorColor(palette()), lineWidth(painter)));
  if (isTranslucent) {
    painter.setBrush(withOpacity(window, opacity));
    painter.drawRoundedRect(outline, panelRadius, panelRadius);
  } else {
    painter.fillRect(rect(), window);
    painter.drawRect(outline);
  }
}

}  // namespace zarvy
