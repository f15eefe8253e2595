#include "platform/freedesktop/XdgLoginItem.h"

#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// As an entry's Exec key wants an argument: in quotation marks, with a backslash before what a
// shell would make something of, and then every backslash twice, since the file format takes one
// away.
QString quoted(const QString& argument) {
  QString text;
  for (const QChar character : argument) {
    if (u"\"`$\\"_s.contains(character)) text += u'\\';
    text += character;
    if (character == u'%') text += character;
  }
  return u'"' + text.replace(u"\\"_s, u"\\\\"_s) + u'"';
}

// Desktops put the output of what they start into a log, which is no place for what was typed.
QByteArray entryFor(const QString& program) {
  return u"[Desktop Entry]\nType=Application\nName=Zarvy\nComment=Expands text as you type\n"
         "Exec=sh -c %1 %2\nTerminal=false\n"_s
             .arg(quoted(u"exec \"$0\" >/dev/null"_s), quoted(program))
             .toUtf8();
}

}  // namespace

QString XdgLoginItem::desktopFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/autostart/zarvy.desktop"_s;
}

XdgLoginItem::XdgLoginItem(QString program, QString file)
    : m_program(std::move(program)), m_file(std::move(file)) {}

std::optional<QString> XdgLoginItem::enable() {
  QDir().mkpath(QFileInfo(m_file).path());
  const QByteArray entry = entryFor(m_program);
  QSaveFile file(m_file);
  if (file.open(QIODevice::WriteOnly) && file.write(entry) == entry.size() && file.commit()) {
    return std::nullopt;
  }
  return file.errorString();
}

std::optional<QString> XdgLoginItem::disable() {
  QFile file(m_file);
  if (!file.exists() || file.remove()) return std::nullopt;
  return file.errorString();
}

}  // namespace zarvy
