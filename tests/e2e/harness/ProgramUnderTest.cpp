#include "e2e/harness/ProgramUnderTest.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>

namespace zarvy::e2e {

namespace {

constexpr auto startDeadline = std::chrono::seconds(30);
constexpr auto endDeadline = std::chrono::seconds(20);

void writePrivately(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
  ::chmod(path.c_str(), S_IRUSR | S_IWUSR);
}

}  // namespace

ProgramUnderTest::ProgramUnderTest(Setting setting) : m_setting(std::move(setting)) {
  for (const auto& [name, value] : environmentWithHome(m_setting.homeFolder)) {
    m_setting.environment[name] = value;
  }
}

void ProgramUnderTest::writeLibrary(const std::vector<TestSnippet>& snippets) const {
  const std::filesystem::path folder = m_setting.environment.at("XDG_DATA_HOME") + "/Zarvy";
  std::filesystem::create_directories(folder);
  ::chmod(folder.c_str(), S_IRWXU);
  writePrivately(folder / "snippets.json", snippetDocument(snippets));
  writePrivately(folder / "settings.json",
                 "{\n  \"hideDockIcon\" : false,\n  \"iCloudSyncEnabled\" : false,\n"
                 "  \"launchAtLogin\" : false,\n  \"soundEnabled\" : false\n}");
}

void ProgramUnderTest::start() {
  launch();
  if (!waitUntilListening()) throw std::runtime_error("the program does not listen");
}

void ProgramUnderTest::launch() {
  m_process.reset();
  m_process.emplace(ProcessSpecification{.program = m_setting.program,
                                         .arguments = m_setting.arguments,
                                         .environment = m_setting.environment,
                                         .errorFile = m_setting.homeFolder + "/error.log",
                                         .descriptors = {}});
}

bool ProgramUnderTest::waitUntilListening() {
  return m_process->waitForLine(
      [](const std::string& line) {
        return line == "KeyboardMonitor: Started (NSEvent global monitoring)";
      },
      startDeadline);
}

std::optional<ExitStatus> ProgramUnderTest::terminate() {
  m_process->sendSignal(SIGTERM);
  return m_process->waitForExit(endDeadline);
}

void ProgramUnderTest::kill() {
  m_process->sendSignal(SIGKILL);
  static_cast<void>(m_process->waitForExit(endDeadline));
}

int ProgramUnderTest::expansionCount() const {
  const auto lines = m_process->outputLines();
  return static_cast<int>(std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.starts_with("EXPANDING to: '");
  }));
}

std::string ProgramUnderTest::errorOutput() const {
  std::ostringstream text;
  text << std::ifstream(m_setting.homeFolder + "/error.log").rdbuf();
  return text.str();
}

}  // namespace zarvy::e2e
