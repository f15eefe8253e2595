#pragma once

#include <QDBusVirtualObject>

#include "platform/freedesktop/accessibility/BusDaemon.h"

namespace zarvy {

// Stands for the daemon of ibus, on a bus of its own.
class FakeIBus final : public QDBusVirtualObject {
 public:
  FakeIBus();

  [[nodiscard]] const QString& address() const { return m_daemon.address(); }

  QString globalEngine;  // empty where none has been chosen
  bool answers = true;

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  BusDaemon m_daemon;
  BusConnection m_bus;
};

}  // namespace zarvy
