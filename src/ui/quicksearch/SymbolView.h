#pragma once

#include <QWidget>

#include "ui/symbols/Symbol.h"

namespace zarvy {

// A picture beside or above a text, in the colour of text that steps back.
class SymbolView final : public QWidget {
  Q_OBJECT

 public:
  // `extent` in logical pixels.
  SymbolView(Symbol symbol, int extent, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Symbol m_symbol;
};

}  // namespace zarvy
