#pragma once

#include <QDBusVirtualObject>

#include "platform/freedesktop/accessibility/BusDaemon.h"

namespace zarvy {

// Stands on the session bus for fcitx5.
class FakeFcitx5 final : public QDBusVirtualObject {
 public:
  explicit FakeFcitx5(const QString& sessionAddress);

  QString currentInputMethod;
  QString debugInfo;
  bool answers = true;

  [[nodiscard]] int questionCount() const { return m_questionCount; }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  BusConnection m_bus;
  int m_questionCount = 0;
};

}  // namespace zarvy
