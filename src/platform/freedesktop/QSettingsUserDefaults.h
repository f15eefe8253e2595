#pragma once

#include "platform/UserDefaults.h"

namespace zarvy {

// Defaults in a file of lines `key=text` below "[General]", which a user may also write by hand.
// What another process writes to it in the meantime is seen and kept.
class QSettingsUserDefaults final : public UserDefaults {
 public:
  // "Zarvy/Zarvy.conf" where the desktop keeps settings: $XDG_CONFIG_HOME, else ~/.config.
  [[nodiscard]] static QString desktopFile();

  explicit QSettingsUserDefaults(QString file = desktopFile());

  [[nodiscard]] std::optional<QString> string(const QString& key) const override;
  void setString(const QString& key, const QString& value) override;

 private:
  const QString m_file;
};

}  // namespace zarvy
