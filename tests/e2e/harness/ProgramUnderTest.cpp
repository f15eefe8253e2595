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

std::string contentOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace

ProgramUnderTest::ProgramUnderTest(Setting setting) : m_setting(std::move(setting)) {
  for (const auto& [name, value] : environmentWithHome(m_setting.homeFolder)) {
    m_setting.environment[name] = value;
  }
  for (const auto& [name, value] : m_setting.region) m_setting.environment[name] = value;
  // Qt 6 tells nobody of its windows where that is set; it finds the bus as desktops have it.
  m_setting.environment.erase("AT_SPI_BUS_ADDRESS");
}

std::string ProgramUnderTest::dataFolder() const {
  return m_setting.environment.at("XDG_DATA_HOME") + "/Zarvy";
}

void ProgramUnderTest::writeLibrary(const std::vector<TestSnippet>& snippets) const {
  writeDocument("snippets.json", snippetDocument(snippets));
  writeSettings({});
}

void ProgramUnderTest::writeSettings(const TestSettings& settings) const {
  writeDocument("settings.json", settingsDocument(settings));
}

void ProgramUnderTest::writeDocument(const std::string& fileName,
                                     const std::string& content) const {
  const std::string folder = dataFolder();
  std::filesystem::create_directories(folder);
  ::chmod(folder.c_str(), S_IRWXU);
  const std::string path = folder + "/" + fileName;
  std::ofstream(path, std::ios::binary) << content;
  ::chmod(path.c_str(), S_IRUSR | S_IWUSR);
}

void ProgramUnderTest::writeDefaults(const std::string& content) const {
  const std::string folder = m_setting.environment.at("XDG_CONFIG_HOME") + "/Zarvy";
  std::filesystem::create_directories(folder);
  std::ofstream(folder + "/Zarvy.conf", std::ios::binary) << content;
}

std::string ProgramUnderTest::document(const std::string& fileName) const {
  return contentOf(dataFolder() + "/" + fileName);
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
                                         .descriptors = m_setting.descriptors});
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
  return contentOf(m_setting.homeFolder + "/error.log");
}

}  // namespace zarvy::e2e
