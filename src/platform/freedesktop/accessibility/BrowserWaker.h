#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

namespace zarvy {

// Has Chromium and its relatives tell of their fields. They speak on the accessibility bus, but say
// no more than which window is active until a program asks one of their windows for its attributes,
// as screen readers do. That costs them memory and time from then on. Asks each application once:
// those that are there at the beginning, and others as soon as one of their windows is active. One
// thread, which runs an event loop.
class BrowserWaker final : public QObject {
  Q_OBJECT

 public:
  // `bus` is connected, and the registry has been asked for the activation of windows.
  explicit BrowserWaker(QDBusConnection bus);

 private:
  Q_SLOT void handleActivatedWindow(const QDBusMessage& signal);
  void wake(const AccessibleObject& window);
  void wakeWindowsOf(const AccessibleObject& application);

  QDBusConnection m_bus;
  QSet<QString> m_woken;  // by the names of their connections, which are never used again
};

}  // namespace zarvy
