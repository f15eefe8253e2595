#include "platform/x11/XkbTools.h"

#include <stdexcept>
#include <vector>

#include <QTemporaryFile>

#include "e2e/harness/ChildProcess.h"

namespace zarvy::x11 {

namespace {

constexpr auto deadline = std::chrono::seconds(30);

void runTool(const std::string& program, const std::vector<std::string>& arguments,
             const e2e::Environment& environment) {
  e2e::ChildProcess tool({.program = program,
                          .arguments = arguments,
                          .environment = environment,
                          .errorFile = {},
                          .descriptors = {}});
  const auto status = tool.waitForExit(deadline);
  if (!status || *status != e2e::ExitStatus{}) throw std::runtime_error(program + " failed");
}

}  // namespace

void setLayoutOfKeyboard(std::uint16_t device, const std::string& layout,
                         const e2e::Environment& environment) {
  runTool(
      "setxkbmap",
      {"-device", std::to_string(device), "-rules", "evdev", "-model", "pc105", "-layout", layout},
      environment);
}

void loadKeymap(const std::string& keymap, const e2e::Environment& environment) {
  QTemporaryFile file;
  if (!file.open() || file.write(QByteArray::fromStdString(keymap)) < 0 || !file.flush()) {
    throw std::runtime_error("the keymap cannot be written");
  }
  runTool("xkbcomp", {"-w0", file.fileName().toStdString(), environment.at("DISPLAY")},
          environment);
}

}  // namespace zarvy::x11
