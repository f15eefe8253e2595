#pragma once

#include <optional>

#include <QPushButton>

#include "ui/symbols/Symbol.h"

namespace zarvy {

// A button whose colour says something of what it does. While it cannot be pressed it looks as any
// other button.
class TintedButton final : public QPushButton {
  Q_OBJECT

 public:
  enum class Tint {
    none,
    prominent,             // what is most likely wanted, in the accent colour of the desktop
    destructive,           // takes something away
    prominentDestructive,  // both
  };

  // `parent` is where it stays.
  TintedButton(Tint tint, const QString& text, QWidget* parent);

  void setTint(Tint tint);

  // In front of the text, and in its colour.
  void setSymbol(Symbol symbol);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void takeColors();

  Tint m_tint;
  std::optional<Symbol> m_symbol;
  bool m_isTakingColors = false;
};

}  // namespace zarvy
