#pragma once

#include <QDBusVirtualObject>
#include <QStringList>

#include "platform/freedesktop/accessibility/BusDaemon.h"

namespace zarvy {

// Stands on the accessibility bus for what tells applications which events are wanted, and which
// applications there are.
class FakeRegistry final : public QDBusVirtualObject {
 public:
  explicit FakeRegistry(const QString& accessibilityAddress);

  // In the order of the requests.
  [[nodiscard]] const QStringList& wantedEvents() const { return m_wantedEvents; }

  // How often it was asked for them.
  [[nodiscard]] int questionCount() const { return m_questionCount; }

  // The applications of the desktop, by their names on the bus.
  void setApplications(const QStringList& names) { m_applications = names; }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QStringList m_wantedEvents;
  int m_questionCount = 0;
  QStringList m_applications;
  BusConnection m_bus;
};

}  // namespace zarvy
