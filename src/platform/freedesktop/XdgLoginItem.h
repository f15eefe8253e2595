#pragma once

#include "platform/LoginItem.h"

namespace zarvy {

// The entry in the user's autostart folder, which every desktop reads at login.
class XdgLoginItem final : public LoginItem {
 public:
  // "autostart/zarvy.desktop" where the desktop keeps settings: $XDG_CONFIG_HOME, else ~/.config.
  [[nodiscard]] static QString desktopFile();

  // `program` is the path of what the desktop is to start.
  explicit XdgLoginItem(QString program, QString file = desktopFile());

  [[nodiscard]] std::optional<QString> enable() override;
  // Nothing to do where there is no entry.
  [[nodiscard]] std::optional<QString> disable() override;

 private:
  const QString m_program;
  const QString m_file;
};

}  // namespace zarvy
