#pragma once

#include <optional>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// A panel with a system tray, and the mouse of somebody who uses it. Ends with the object. Throws
// std::runtime_error where it does not come up.
class SystemTray {
 public:
  SystemTray(const XConnection& connection, const Environment& environment,
             const std::string& logFolder);

  // Clicks the icon of the program whose windows have this class, once it is there; false where it
  // does not come.
  [[nodiscard]] bool clickIconOf(const std::string& windowClass);

  // Waits until a menu of that program has popped up, or none is there any more.
  [[nodiscard]] bool waitForMenuOf(const std::string& windowClass, bool present);

 private:
  const XConnection& m_connection;
  ChildProcess m_process;
};

}  // namespace zarvy::e2e
