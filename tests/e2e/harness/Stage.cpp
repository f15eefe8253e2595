#include "e2e/harness/Stage.h"

#include <filesystem>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

Environment desktopEnvironment(const std::string& folder, const std::string& display) {
  Environment environment = environmentWithHome(folder);
  environment["DISPLAY"] = display;
  return environment;
}

Environment withBuses(Environment environment, const SessionBus& bus) {
  environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
  environment["AT_SPI_BUS_ADDRESS"] = bus.accessibilityAddress();
  return environment;
}

}  // namespace

Stage::Stage(const KeyboardLayout& layout, WindowManagerKind windowManager)
    : m_server(m_folder.path().toStdString()),
      m_environment(desktopEnvironment(m_folder.path().toStdString(), m_server.display())),
      m_connection(m_server.display()),
      m_bus(m_environment, m_folder.path().toStdString()),
      m_windowManager(windowManager, m_connection, withBuses(m_environment, m_bus),
                      m_folder.path().toStdString()),
      m_person(m_connection) {
  m_environment = withBuses(m_environment, m_bus);
  setKeyboardLayout(layout, m_environment);
}

Stage::~Stage() = default;

ProgramUnderTest& Stage::startProgram(const std::string& program,
                                      const std::vector<TestSnippet>& snippets) {
  makeProgram(program);
  m_program->writeLibrary(snippets);
  m_program->start();
  return *m_program;
}

ProgramUnderTest& Stage::startProgramWithFirstRunLibrary(const std::string& program) {
  makeProgram(program);
  m_program->start();
  return *m_program;
}

ProgramUnderTest& Stage::makeProgram(const std::string& program) {
  m_program = std::make_unique<ProgramUnderTest>(ProgramUnderTest::Setting{
      .program = program, .environment = m_environment, .homeFolder = makeFolder("program")});
  return *m_program;
}

TargetApplication& Stage::startTarget(TargetKind kind) {
  m_target.reset();
  m_target = makeTarget(kind);
  m_target->start(m_person);
  return *m_target;
}

std::string Stage::makeFolder(const std::string& name) {
  const std::string path =
      m_folder.path().toStdString() + "/" + name + std::to_string(m_folderCount++);
  std::filesystem::create_directories(path);
  return path;
}

std::unique_ptr<TargetApplication> Stage::makeTarget(TargetKind kind) {
  return e2e::makeTarget(kind, {.connection = m_connection,
                                .environment = m_environment,
                                .folder = makeFolder(nameOf(kind)),
                                .accessibilityAddress = m_bus.accessibilityAddress()});
}

}  // namespace zarvy::e2e
