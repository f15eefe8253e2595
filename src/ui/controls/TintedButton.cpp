#include "ui/controls/TintedButton.h"

#include <QEvent>

#include "ui/style/SystemColors.h"
#include "ui/style/Tones.h"
#include "ui/symbols/SymbolIcon.h"

namespace zarvy {
namespace {

// Styles draw a button lighter than its colour: one of the accent's up to a quarter, a dark one
// more.
constexpr int lightening = 125;  // percent
constexpr int lighteningOfDark = 190;

// `color` as that of a button that `text` can be read on: moved away from the text only as far as
// it takes.
QColor groundFor(const QColor& color, const QColor& text) {
  constexpr int steps = 20;
  const QColor away = text.lightnessF() > 0.5F ? Qt::black : Qt::white;
  for (int step = 0; step < steps; ++step) {
    const QColor ground = blended(color, away, static_cast<double>(step) / steps);
    if (contrastBetween(ground.lighter(lightening), text) >= textContrast) return ground;
  }
  return color;
}

// On the button as it is drawn, wherever that is lighter.
QColor destructiveText(const QPalette& around, QPalette::ColorGroup group) {
  const QColor text = around.color(group, QPalette::ButtonText);
  const QColor ground = around.color(group, QPalette::Button);
  const QColor red = legible(systemColor(meaning::failure, around), ground, text);
  return legible(red, ground.lighter(lighteningOfDark), text);
}

void setGround(QPalette& own, QPalette::ColorGroup group, const QColor& color, const QColor& text) {
  own.setColor(group, QPalette::Button, groundFor(color, text));
  own.setColor(group, QPalette::ButtonText, text);
}

}  // namespace

TintedButton::TintedButton(Tint tint, const QString& text, QWidget* parent)
    : QPushButton(text, parent), m_tint(tint) {
  takeColors();
}

void TintedButton::setTint(Tint tint) {
  m_tint = tint;
  takeColors();
}

void TintedButton::setSymbol(Symbol symbol) {
  m_symbol = symbol;
  takeColors();
}

void TintedButton::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) takeColors();
}

void TintedButton::takeColors() {
  if (m_isTakingColors) return;
  m_isTakingColors = true;
  const QPalette& around = parentWidget()->palette();
  QPalette own;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    switch (m_tint) {
      case Tint::none:
        break;
      case Tint::prominent:
        setGround(own, group, around.color(group, QPalette::Highlight),
                  around.color(group, QPalette::HighlightedText));
        break;
      case Tint::destructive:
        own.setColor(group, QPalette::ButtonText, destructiveText(around, group));
        break;
      case Tint::prominentDestructive:
        setGround(own, group, systemColor(meaning::failure, around), Qt::white);
        break;
    }
  }
  setPalette(own);
  if (m_symbol) setIcon(symbolIcon(*m_symbol, activeColor(palette(), QPalette::ButtonText)));
  m_isTakingColors = false;
}

}  // namespace zarvy
