#pragma once

#include <QWidget>

#include "ui/style/ToneKeeper.h"
#include "ui/symbols/Symbol.h"

class QLabel;

namespace zarvy {

// A text behind a symbol.
class SymbolLabel final : public QWidget {
  Q_OBJECT

 public:
  SymbolLabel(Symbol symbol, const Ink& symbolInk, const QString& text, const Tone& tone,
              QWidget* parent);

  // Over as many lines as it takes, in place of one.
  void setWordWrap(bool wraps);

 private:
  QLabel* m_text;
};

}  // namespace zarvy
