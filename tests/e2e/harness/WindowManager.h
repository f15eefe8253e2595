#pragma once

#include <string>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// An openbox that manages the windows of the display once constructed. Throws std::runtime_error
// where it does not come up.
class WindowManager {
 public:
  WindowManager(const XConnection& connection, const Environment& environment,
                const std::string& logFolder);

 private:
  ChildProcess m_process;
};

}  // namespace zarvy::e2e
