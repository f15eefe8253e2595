#pragma once

#include <QWidget>

#include "ui/style/Ink.h"
#include "ui/symbols/Symbol.h"

namespace zarvy {

// A symbol beside or above a text, at first in the colour of text that steps back.
class SymbolView final : public QWidget {
  Q_OBJECT

 public:
  // `extent` in logical pixels.
  SymbolView(Symbol symbol, int extent, QWidget* parent, const Ink& ink = TextColor::tertiary);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Symbol m_symbol;
  const Ink m_ink;
};

}  // namespace zarvy
