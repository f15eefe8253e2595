#pragma once

#include <QDBusVirtualObject>
#include <QStringList>

#include "platform/freedesktop/accessibility/BusDaemon.h"

namespace zarvy {

// Stands on the accessibility bus for what tells applications which events somebody wants.
class FakeRegistry final : public QDBusVirtualObject {
 public:
  explicit FakeRegistry(const QString& accessibilityAddress);

  // In the order of the requests.
  [[nodiscard]] const QStringList& wantedEvents() const { return m_wantedEvents; }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QStringList m_wantedEvents;
  BusConnection m_bus;
};

}  // namespace zarvy
