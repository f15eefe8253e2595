#include "platform/freedesktop/QSettingsUserDefaults.h"

#include <utility>

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString QSettingsUserDefaults::desktopFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/Zarvy/Zarvy.conf"_s;
}

QSettingsUserDefaults::QSettingsUserDefaults(QString file) : m_file(std::move(file)) {}

// One QSettings for each access: it is not for several threads, what it stands on is. It writes
// when it ends.
std::optional<QString> QSettingsUserDefaults::string(const QString& key) const {
  const QSettings settings(m_file, QSettings::IniFormat);
  if (!settings.contains(key)) return std::nullopt;
  // A text with commas that was written by hand, without quotes, arrives in pieces.
  return settings.value(key).toStringList().join(u", "_s);
}

void QSettingsUserDefaults::setString(const QString& key, const QString& value) {
  QSettings(m_file, QSettings::IniFormat).setValue(key, value);
}

}  // namespace zarvy
