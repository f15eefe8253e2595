#pragma once

#include <memory>
#include <string>

#include <QDBusConnection>
#include <QString>
#include <QThread>

namespace zarvy::e2e {

// A desktop's tray on the session bus, and what it would show of a program's icon. It answers
// programs on a thread of its own. Throws std::runtime_error where the bus has such a tray already.
class StatusNotifierHost {
 public:
  explicit StatusNotifierHost(const std::string& sessionAddress);
  ~StatusNotifierHost();
  StatusNotifierHost(const StatusNotifierHost&) = delete;
  StatusNotifierHost& operator=(const StatusNotifierHost&) = delete;

  // The tool tip of the icon of this process; empty where it has none.
  [[nodiscard]] QString toolTipOf(qint64 processIdentifier) const;

 private:
  class Watcher;

  [[nodiscard]] QString toolTipOf(const QString& owner) const;

  QDBusConnection m_bus;
  std::unique_ptr<Watcher> m_watcher;  // lives on m_thread
  QThread m_thread;
};

}  // namespace zarvy::e2e
