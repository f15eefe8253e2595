#pragma once

#include <optional>
#include <string>
#include <vector>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/TestSnippet.h"

namespace zarvy::e2e {

// The built program, started with a home folder of its own. Throws std::runtime_error where it does
// not come to listening. Ends with the object.
class ProgramUnderTest {
 public:
  struct Setting {
    std::string program;      // path
    Environment environment;  // DISPLAY and the buses; HOME and the like are replaced
    std::string homeFolder;   // made where it is absent
    std::vector<std::string> arguments = {};
  };

  explicit ProgramUnderTest(Setting setting);

  // Makes `snippets` the library that the next start finds.
  void writeLibrary(const std::vector<TestSnippet>& snippets) const;

  // Starts it and waits until it has said that it listens.
  void start();

  // The same without the waiting.
  void launch();
  [[nodiscard]] bool waitUntilListening();

  // SIGTERM; absent where it does not end in time.
  [[nodiscard]] std::optional<ExitStatus> terminate();

  // SIGKILL.
  void kill();

  [[nodiscard]] ChildProcess& process() { return *m_process; }

  // How many expansions it has announced since it was started.
  [[nodiscard]] int expansionCount() const;

  [[nodiscard]] std::string errorOutput() const;

 private:
  Setting m_setting;
  std::optional<ChildProcess> m_process;
};

}  // namespace zarvy::e2e
