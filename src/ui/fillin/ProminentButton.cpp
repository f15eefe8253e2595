#include "ui/fillin/ProminentButton.h"

#include <QEvent>

#include "ui/style/Tones.h"

namespace zarvy {

namespace {

// Styles draw a button up to a quarter lighter than its colour.
constexpr int lightening = 125;  // percent

// `accent` as the colour of a button that `text` can be read on: moved away from the text only as
// far as it takes.
QColor groundFor(const QColor& accent, const QColor& text) {
  constexpr int steps = 20;
  const QColor away = text.lightnessF() > 0.5F ? Qt::black : Qt::white;
  for (int step = 0; step < steps; ++step) {
    const QColor ground = blended(accent, away, static_cast<double>(step) / steps);
    if (contrastBetween(ground.lighter(lightening), text) >= 4.5) return ground;
  }
  return accent;
}

}  // namespace

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
    const QColor text = desktop.color(group, QPalette::HighlightedText);
    own.setColor(group, QPalette::Button,
                 groundFor(desktop.color(group, QPalette::Highlight), text));
    own.setColor(group, QPalette::ButtonText, text);
  }
  setPalette(own);
  m_isTakingColors = false;
}

}  // namespace zarvy
