#include "platform/freedesktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace zarvy {

QString QtPasteboard::text() const {
  const QClipboard* const clipboard = QGuiApplication::clipboard();
  return clipboard->ownsClipboard() ? clipboard->text(QClipboard::Clipboard) : m_others.text();
}

}  // namespace zarvy
