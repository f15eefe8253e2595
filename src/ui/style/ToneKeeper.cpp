#include "ui/style/ToneKeeper.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "ui/style/Tones.h"

namespace zarvy {
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
  m_widget.setFont(styledFont(QApplication::font(&m_widget), m_tone.style));
  QPalette palette;
  palette.setColor(QPalette::WindowText, inkOn(m_tone.ink, parent->palette(),
                                               activeColor(parent->palette(), m_tone.ground)));
  m_widget.setPalette(palette);
  m_isApplying = false;
}

}  // namespace zarvy
