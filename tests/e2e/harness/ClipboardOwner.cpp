#include "e2e/harness/ClipboardOwner.h"

#include <stdexcept>

namespace zarvy::e2e {

ClipboardOwner::ClipboardOwner(const Environment& environment, const std::string& text,
                               const std::string& logFolder)
    : m_process({.program = ZARVY_E2E_CLIPBOARD_OWNER,
                 .arguments = {text},
                 .environment = environment,
                 .errorFile = logFolder + "/clipboard.log",
                 .descriptors = {}}) {
  const auto saysSo = [](const std::string& line) { return line == "owned"; };
  if (!m_process.waitForLine(saysSo, std::chrono::seconds(30))) {
    throw std::runtime_error("nobody owns the clipboard");
  }
}

}  // namespace zarvy::e2e
