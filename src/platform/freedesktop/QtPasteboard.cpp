#include "platform/freedesktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace zarvy {

QtPasteboard::QtPasteboard(const Pasteboard& others) : m_others(others) {
  QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &m_listener,
                   [this] { keepOwnText(); });
  keepOwnText();
}

void QtPasteboard::keepOwnText() {
  const QClipboard* const clipboard = QGuiApplication::clipboard();
  m_ownText = clipboard->ownsClipboard() ? clipboard->text(QClipboard::Clipboard) : QString();
}

// Another application may have copied something of which the toolkit has not read yet: to ask it
// for the text then would be to wait for that application.
QString QtPasteboard::text() const {
  return QGuiApplication::clipboard()->ownsClipboard() ? m_ownText : m_others.text();
}

}  // namespace zarvy
