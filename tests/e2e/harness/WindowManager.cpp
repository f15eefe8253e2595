#include "e2e/harness/WindowManager.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

namespace {

constexpr auto xfwm4Settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="prevent_focus_stealing" type="bool" value="true"/>
  </property>
</channel>
)";

bool isManaged(const XConnection& connection) {
  const std::string name = "_NET_SUPPORTING_WM_CHECK";
  const auto announced = connection.property(connection.root(), name);
  return announced.size() == 1 && connection.property(announced[0], name) == announced;
}

void writeXfwm4Settings(const Environment& environment) {
  const std::filesystem::path folder =
      environment.at("XDG_CONFIG_HOME") + "/xfce4/xfconf/xfce-perchannel-xml";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "xfwm4.xml") << xfwm4Settings;
}

ProcessSpecification specificationOf(WindowManagerKind kind, const Environment& environment,
                                     const std::string& logFolder) {
  ProcessSpecification specification{.program = nameOf(kind),
                                     .arguments = {"--sm-disable"},
                                     .environment = environment,
                                     .errorFile = logFolder + "/" + nameOf(kind) + ".log",
                                     .descriptors = {}};
  if (kind == WindowManagerKind::xfwm4) {
    writeXfwm4Settings(environment);
    specification.arguments = {"--compositor=off"};
  }
  return specification;
}

}  // namespace

std::string nameOf(WindowManagerKind kind) {
  return kind == WindowManagerKind::openbox ? "openbox" : "xfwm4";
}

WindowManager::WindowManager(WindowManagerKind kind, const XConnection& connection,
                             const Environment& environment, const std::string& logFolder)
    : m_process(specificationOf(kind, environment, logFolder)) {
  if (!waitUntil([&] { return isManaged(connection); }, std::chrono::seconds(30))) {
    throw std::runtime_error(nameOf(kind) + " did not come up");
  }
}

}  // namespace zarvy::e2e
