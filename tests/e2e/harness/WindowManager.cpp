#include "e2e/harness/WindowManager.h"

#include <stdexcept>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

namespace {

bool isManaged(const XConnection& connection) {
  const std::string name = "_NET_SUPPORTING_WM_CHECK";
  const auto announced = connection.property(connection.root(), name);
  return announced.size() == 1 && connection.property(announced[0], name) == announced;
}

}  // namespace

WindowManager::WindowManager(const XConnection& connection, const Environment& environment,
                             const std::string& logFolder)
    : m_process({.program = "openbox",
                 .arguments = {"--sm-disable"},
                 .environment = environment,
                 .errorFile = logFolder + "/openbox.log",
                 .descriptors = {}}) {
  if (!waitUntil([&] { return isManaged(connection); }, std::chrono::seconds(30))) {
    throw std::runtime_error("openbox did not come up");
  }
}

}  // namespace zarvy::e2e
