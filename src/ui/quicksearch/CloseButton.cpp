#include "ui/quicksearch/CloseButton.h"

#include <QPainter>

#include "ui/quicksearch/Symbol.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int extent = 20;
constexpr int symbolExtent = 12;

}  // namespace

CloseButton::CloseButton(QWidget* parent) : QAbstractButton(parent) {
  setAccessibleName(u"Close"_s);
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_Hover);  // painted anew when the pointer comes and goes
  setFixedSize(extent, extent);
}

void CloseButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (underMouse()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(palette().color(QPalette::WindowText), isDown() ? 0.22 : 0.12));
    painter.drawEllipse(rect());
  }
  QRect area(0, 0, symbolExtent, symbolExtent);
  area.moveTopLeft({(width() - symbolExtent) / 2, (height() - symbolExtent) / 2});
  drawSymbol(painter, area, Symbol::close,
             underMouse() ? secondaryColor(palette()) : tertiaryColor(palette()));
}

}  // namespace zarvy
