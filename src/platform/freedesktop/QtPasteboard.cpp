#include "platform/freedesktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace zarvy {

QString QtPasteboard::text() const {
  return QGuiApplication::clipboard()->text(QClipboard::Clipboard);
}

}  // namespace zarvy
