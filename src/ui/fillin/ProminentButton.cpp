#include "ui/fillin/ProminentButton.h"

#include <QEvent>

namespace zarvy {

ProminentButton::ProminentButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
  setDefault(true);
  takeColors();
}

void ProminentButton::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) takeColors();
}

// While it cannot be pressed it looks as any other button.
void ProminentButton::takeColors() {
  if (m_isTakingColors) return;
  m_isTakingColors = true;
  const QPalette& desktop = parentWidget()->palette();
  QPalette own;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    own.setColor(group, QPalette::Button, desktop.color(group, QPalette::Highlight));
    own.setColor(group, QPalette::ButtonText, desktop.color(group, QPalette::HighlightedText));
  }
  setPalette(own);
  m_isTakingColors = false;
}

}  // namespace zarvy
