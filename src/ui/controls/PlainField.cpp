#include "ui/controls/PlainField.h"

#include <QEvent>

#include "ui/style/Tones.h"

namespace zarvy {

PlainField::PlainField(const TextStyle& style, QWidget* parent)
    : QLineEdit(parent), m_style(style) {
  setFrame(false);
  parent->installEventFilter(this);
  followSurroundings();
}

bool PlainField::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if (watched == parentWidget() && (type == QEvent::FontChange || type == QEvent::PaletteChange)) {
    followSurroundings();
  }
  return QLineEdit::eventFilter(watched, event);
}

// A font with a size of its own does not change with that of the desktop.
void PlainField::followSurroundings() {
  setFont(styledFont(parentWidget()->font(), m_style));
  const QPalette around = parentWidget()->palette();
  QPalette own;
  own.setColor(QPalette::Base, Qt::transparent);
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    own.setColor(group, QPalette::Text, activeColor(around, QPalette::WindowText));
  }
  own.setColor(QPalette::PlaceholderText,
               tertiaryColor(around, activeColor(around, QPalette::Window)));
  setPalette(own);
}

}  // namespace zarvy
