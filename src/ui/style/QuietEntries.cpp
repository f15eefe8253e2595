#include "ui/style/QuietEntries.h"

#include <QEvent>
#include <QMenu>

#include "ui/style/Tones.h"

namespace zarvy {

QuietEntries::QuietEntries(QMenu& menu) : QObject(&menu), m_menu(menu) {
  apply();
  menu.installEventFilter(this);
}

bool QuietEntries::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) apply();
  return QObject::eventFilter(watched, event);
}

// What is set here comes back as a change of its own.
void QuietEntries::apply() {
  if (m_isApplying) return;
  m_isApplying = true;
  const QPalette& palette = m_menu.palette();
  const QColor onWindow = secondaryColor(palette, activeColor(palette, QPalette::Window));
  const QColor color = legible(onWindow, activeColor(palette, QPalette::Base),
                               activeColor(palette, QPalette::WindowText));
  QPalette own;
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    own.setColor(QPalette::Disabled, role, color);
  }
  // Styles draw a menu on either, and Qt's own a relief behind what is disabled.
  own.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  m_menu.setPalette(own);
  m_isApplying = false;
}

}  // namespace zarvy
