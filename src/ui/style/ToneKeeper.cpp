#include "ui/style/ToneKeeper.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "ui/style/Tones.h"

namespace zarvy {
namespace {

QColor colorOf(const Tone& tone, const QPalette& palette) {
  const QColor ground = activeColor(palette, tone.ground);
  switch (tone.color) {
    case Tone::Color::secondary:
      return secondaryColor(palette, ground);
    case Tone::Color::tertiary:
      return tertiaryColor(palette, ground);
    case Tone::Color::required:
      return requiredColor(palette, ground);
    case Tone::Color::granted:
      return grantedColor(palette, ground);
    case Tone::Color::primary:
      break;
  }
  return activeColor(palette, QPalette::WindowText);
}

}  // namespace

ToneKeeper::ToneKeeper(QWidget& widget, const Tone& tone)
    : QObject(&widget), m_widget(widget), m_tone(tone) {
  widget.setForegroundRole(QPalette::WindowText);  // also on the ground of an input
  apply();
  widget.installEventFilter(this);
  // A font with a size of its own does not change with that of the desktop; the parent's does.
  widget.parentWidget()->installEventFilter(this);
}

bool ToneKeeper::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ApplicationFontChange:
    case QEvent::FontChange:
    case QEvent::PaletteChange:
    case QEvent::ParentChange:
    case QEvent::StyleChange:
      apply();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

// What is set here comes back as a change of its own.
void ToneKeeper::apply() {
  const QWidget* const parent = m_widget.parentWidget();
  if (m_isApplying || parent == nullptr) return;
  m_isApplying = true;
  QFont font = scaledFont(QApplication::font(&m_widget), m_tone.scale);
  font.setWeight(m_tone.weight);
  m_widget.setFont(font);
  QPalette palette;
  palette.setColor(QPalette::WindowText, colorOf(m_tone, parent->palette()));
  m_widget.setPalette(palette);
  m_isApplying = false;
}

}  // namespace zarvy
