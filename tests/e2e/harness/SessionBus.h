#pragma once

#include <string>

#include "e2e/harness/ChildProcess.h"

namespace zarvy::e2e {

// A D-Bus session of its own with an accessibility bus beside it, both answering once constructed.
// Throws std::runtime_error where one does not come up.
class SessionBus {
 public:
  SessionBus(const Environment& environment, const std::string& logFolder);
  ~SessionBus();

  // For DBUS_SESSION_BUS_ADDRESS.
  [[nodiscard]] const std::string& address() const { return m_address; }
  [[nodiscard]] const std::string& accessibilityAddress() const { return m_accessibilityAddress; }

  // The daemon of the accessibility bus; not a child of this process.
  [[nodiscard]] pid_t accessibilityProcess() const;

 private:
  ChildProcess m_daemon;
  std::string m_address;
  std::string m_accessibilityAddress;
  std::optional<ChildProcess> m_launcher;
};

}  // namespace zarvy::e2e
