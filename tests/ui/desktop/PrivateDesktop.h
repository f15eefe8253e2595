#pragma once

#include <QTemporaryDir>

#include "e2e/harness/Environment.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/WindowManager.h"
#include "e2e/harness/XConnection.h"

namespace zarvy {

// An X server of one's own with a window manager, for programs that show windows. Ends with the
// object. Throws std::runtime_error where it does not come up.
class PrivateDesktop {
 public:
  PrivateDesktop();

  // For programs that are to appear on it.
  [[nodiscard]] e2e::Environment environment() const;

 private:
  const QTemporaryDir m_home;
  const e2e::PrivateXServer m_server;
  const e2e::XConnection m_connection;
  const e2e::WindowManager m_manager;
};

}  // namespace zarvy
