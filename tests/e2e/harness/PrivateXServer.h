#pragma once

#include <optional>
#include <string>
#include <vector>

#include "e2e/harness/ChildProcess.h"

namespace zarvy::e2e {

// An Xvfb of its own on a free display number, ready for clients once constructed. Ends with the
// object. `furtherArguments` go to Xvfb. Throws std::runtime_error where it does not come up.
class PrivateXServer {
 public:
  explicit PrivateXServer(const std::string& logFolder,
                          const std::vector<std::string>& furtherArguments = {});

  // As in DISPLAY, ":7" for example.
  [[nodiscard]] const std::string& display() const { return m_display; }

  // The server's process, until kill().
  [[nodiscard]] pid_t pid() const { return m_process->pid(); }

  // Ends the server at once, under the hands of its clients.
  void kill();

 private:
  std::optional<ChildProcess> m_process;
  std::string m_display;
};

}  // namespace zarvy::e2e
