#pragma once

#include <optional>

#include <QDBusConnection>
#include <QString>
#include <QTemporaryDir>

#include "e2e/harness/ChildProcess.h"

namespace zarvy {

// A message bus that starts nothing by itself. Ends with the object. Throws std::runtime_error
// where it does not come up.
class BusDaemon {
 public:
  BusDaemon();

  [[nodiscard]] const QString& address() const { return m_address; }

 private:
  QTemporaryDir m_folder;
  std::optional<e2e::ChildProcess> m_process;
  QString m_address;
};

// A connection to a bus, by the name that this gives it; ends with the object.
class BusConnection {
 public:
  explicit BusConnection(const QString& address);
  ~BusConnection();
  BusConnection(const BusConnection&) = delete;
  BusConnection& operator=(const BusConnection&) = delete;

  [[nodiscard]] QDBusConnection& get() { return m_connection; }

 private:
  QDBusConnection m_connection;
};

}  // namespace zarvy
