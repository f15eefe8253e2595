#include "e2e/harness/AccessibleTarget.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

namespace {

std::string contentOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace

AccessibleTarget::AccessibleTarget(TargetSetting setting, PositionUnit unit)
    : TargetApplication(std::move(setting)),
      m_unit(unit),
      m_file(this->setting().folder + "/note.txt"),
      m_text(this->setting().accessibilityAddress) {
  const std::ofstream emptyFile(m_file);
}

std::string AccessibleTarget::saveAndReadFile(Person& person, const std::string& expected) {
  person.press(XKB_KEY_Control_L);
  person.tap(XKB_KEY_s);
  person.release(XKB_KEY_Control_L);
  static_cast<void>(
      waitUntil([&] { return contentOf(m_file) == expected; }, std::chrono::seconds(15)));
  return contentOf(m_file);
}

void AccessibleTarget::connect() {
  if (!waitUntil([this] { return m_text.find(process().pid()); }, std::chrono::seconds(60),
                 std::chrono::milliseconds(100))) {
    throw std::runtime_error("the editor's text is not on the accessibility bus");
  }
}

ProcessSpecification MousepadTarget::program() {
  return {.program = "mousepad",
          .arguments = {"--disable-server", file()},
          .environment = setting().environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

// The aids of these two for programmers would add to what is typed.

ProcessSpecification FeatherpadTarget::program() {
  const std::filesystem::path folder = setting().folder + "/config/featherpad";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "fp.conf") << "[text]\nnoIndent=true\nautoBracket=false\n"
                                       "autoReplace=false\n";
  Environment environment = setting().environment;
  environment["XDG_CONFIG_HOME"] = setting().folder + "/config";
  return {.program = "featherpad",
          .arguments = {"--standalone", file()},
          .environment = environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

ProcessSpecification KwriteTarget::program() {
  const std::filesystem::path folder = setting().folder + "/config";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "kwriterc") << "[KTextEditor Document]\nIndentation Mode=none\n"
                                        "[KTextEditor View]\nAuto Brackets=false\n"
                                        "Auto Completion=false\n";
  Environment environment = setting().environment;
  environment["XDG_CONFIG_HOME"] = folder;
  return {.program = "kwrite",
          .arguments = {file()},
          .environment = environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

}  // namespace zarvy::e2e
