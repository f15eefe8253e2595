#include "ui/controls/SymbolLabel.h"

#include <QHBoxLayout>
#include <QLabel>

#include "ui/controls/SymbolView.h"

namespace zarvy {
namespace {

constexpr int extentBesideText = 16;
constexpr int gapBehindSymbol = 6;

}  // namespace

SymbolLabel::SymbolLabel(Symbol symbol, const Ink& symbolInk, const QString& text, const Tone& tone,
                         QWidget* parent)
    : QWidget(parent), m_text(inTone(new QLabel(text, this), tone)) {
  m_text->setTextFormat(Qt::PlainText);
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(gapBehindSymbol);
  line->addWidget(new SymbolView(symbol, extentBesideText, this, symbolInk));
  line->addWidget(m_text, 1);
}

void SymbolLabel::setWordWrap(bool wraps) {
  m_text->setWordWrap(wraps);
}

}  // namespace zarvy
