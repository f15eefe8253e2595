#include "ui/style/ToneKeeper.h"

#include <QApplication>
#include <QEvent>

#include "ui/style/Tones.h"

namespace zarvy {

ToneKeeper::ToneKeeper(QWidget& widget, const Tone& tone)
    : QObject(&widget), m_widget(widget), m_tone(tone) {
  widget.setForegroundRole(QPalette::WindowText);  // also on the ground of an input
  widget.installEventFilter(this);
  followParent();
}

bool ToneKeeper::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ParentChange:
      if (watched == &m_widget) followParent();
      break;
    case QEvent::ApplicationFontChange:
    case QEvent::ApplicationPaletteChange:
    case QEvent::FontChange:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
      apply();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

// A font with a size of its own does not change with that of the desktop; the parent's does.
void ToneKeeper::followParent() {
  if (m_parent) m_parent->removeEventFilter(this);
  m_parent = m_widget.parentWidget();
  if (m_parent) m_parent->installEventFilter(this);
  apply();
}

// What is set here comes back as a change of its own.
void ToneKeeper::apply() {
  if (m_isApplying) return;
  m_isApplying = true;
  const QPalette around = m_parent ? m_parent->palette() : QApplication::palette(&m_widget);
  m_widget.setFont(styledFont(QApplication::font(&m_widget), m_tone.style));
  const QColor color = inkOn(m_tone.ink, around, activeColor(around, m_tone.ground));
  QPalette own;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    own.setColor(group, QPalette::WindowText, color);
  }
  m_widget.setPalette(own);
  m_isApplying = false;
}

}  // namespace zarvy
