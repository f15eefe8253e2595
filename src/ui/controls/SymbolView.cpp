#include "ui/controls/SymbolView.h"

#include <QPainter>

#include "ui/symbols/SymbolPicture.h"

namespace zarvy {

SymbolView::SymbolView(Symbol symbol, int extent, QWidget* parent, const Ink& ink)
    : QWidget(parent), m_symbol(symbol), m_ink(ink) {
  setFixedSize(extent, extent);
}

void SymbolView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QColor ground = activeColor(palette(), QPalette::Window);
  const QColor color = isEnabled() ? inkOn(m_ink, palette(), ground, lineContrast)
                                   : palette().color(QPalette::Disabled, QPalette::WindowText);
  drawSymbol(painter, rect(), m_symbol, color);
}

}  // namespace zarvy
