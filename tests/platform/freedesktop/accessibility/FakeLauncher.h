#pragma once

#include <QDBusVirtualObject>
#include <QList>

#include "platform/freedesktop/accessibility/BusDaemon.h"

namespace zarvy {

// Stands on the session bus for what starts the accessibility bus.
class FakeLauncher final : public QDBusVirtualObject {
 public:
  FakeLauncher(const QString& sessionAddress, QString accessibilityAddress, bool isEnabled);

  // Whether programs are told that there is a listener, and what it was set to so far.
  [[nodiscard]] bool isEnabled() const { return m_isEnabled; }
  [[nodiscard]] const QList<bool>& settings() const { return m_settings; }

  // Where the bus is from now on.
  void setAddress(const QString& address) { m_accessibilityAddress = address; }

  // How often it has been asked where the bus is.
  [[nodiscard]] int addressQuestionCount() const { return m_addressQuestionCount; }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QString m_accessibilityAddress;
  bool m_isEnabled;
  QList<bool> m_settings;
  int m_addressQuestionCount = 0;
  BusConnection m_bus;
};

}  // namespace zarvy
