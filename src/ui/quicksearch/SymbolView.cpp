#include "ui/quicksearch/SymbolView.h"

#include <QPainter>

#include "ui/style/Tones.h"
#include "ui/symbols/SymbolPicture.h"

namespace zarvy {

SymbolView::SymbolView(Symbol symbol, int extent, QWidget* parent)
    : QWidget(parent), m_symbol(symbol) {
  setFixedSize(extent, extent);
}

void SymbolView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QColor ground = activeColor(palette(), QPalette::Window);
  drawSymbol(painter, rect(), m_symbol, tertiaryColor(palette(), ground));
}

}  // namespace zarvy
