#pragma once

#include <optional>
#include <string>
#include <vector>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/TestSettings.h"
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
    Environment region = {};  // language and time zone, in place of what every child has
    std::vector<ProcessSpecification::Descriptor> descriptors = {};
  };

  explicit ProgramUnderTest(Setting setting);

  // Has it load a library ahead of its own from the next start on.
  void preload(const std::string& library) { m_setting.environment["LD_PRELOAD"] = library; }

  // Makes `snippets` the library that the next start finds.
  void writeLibrary(const std::vector<TestSnippet>& snippets) const;

  // Replaces the settings that writeLibrary() leaves, which turn everything off.
  void writeSettings(const TestSettings& settings) const;

  // A file of the program's data folder; document() is empty where there is none.
  void writeDocument(const std::string& fileName, const std::string& content) const;
  [[nodiscard]] std::string document(const std::string& fileName) const;

  // What it reads beside its documents.
  void writeDefaults(const std::string& content) const;

  [[nodiscard]] const std::string& homeFolder() const { return m_setting.homeFolder; }
  [[nodiscard]] std::string dataFolder() const;

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
