#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QTemporaryDir>

#include "e2e/harness/KeyboardLayout.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/ProgramUnderTest.h"
#include "e2e/harness/SessionBus.h"
#include "e2e/harness/TargetKind.h"
#include "e2e/harness/WindowManager.h"

namespace zarvy::e2e {

// A desktop of its own: X server, window manager, buses, a person at the keyboard; then the program
// and an application as a test asks for them. Everything ends with it. Main thread. Throws
// std::runtime_error where something does not come up.
class Stage {
 public:
  explicit Stage(const KeyboardLayout& layout,
                 WindowManagerKind windowManager = WindowManagerKind::openbox);
  ~Stage();

  [[nodiscard]] PrivateXServer& server() { return m_server; }
  [[nodiscard]] const XConnection& connection() const { return m_connection; }
  [[nodiscard]] Person& person() { return m_person; }

  // DISPLAY, the session bus, and a home folder that the desktop shares.
  [[nodiscard]] const Environment& environment() const { return m_environment; }

  [[nodiscard]] const SessionBus& bus() const { return m_bus; }

  void changeLayout(const KeyboardLayout& layout) { setKeyboardLayout(layout, m_environment); }
  [[nodiscard]] MappingDump mapping() const { return dumpMapping(m_connection, m_environment); }

  // The program, which the caller gives a library and starts. `program` is its path.
  ProgramUnderTest& makeProgram(const std::string& program);

  // Starts the program with this library.
  ProgramUnderTest& startProgram(const std::string& program,
                                 const std::vector<TestSnippet>& snippets);
  // The same with the library that the program makes for a new user.
  ProgramUnderTest& startProgramWithFirstRunLibrary(const std::string& program);
  [[nodiscard]] ProgramUnderTest* program() { return m_program.get(); }

  // Starts an application and brings it to the front; the one before it ends.
  TargetApplication& startTarget(TargetKind kind);
  [[nodiscard]] TargetApplication& target() { return *m_target; }

  [[nodiscard]] WindowManager& windowManager() { return m_windowManager; }

  // A fresh folder that goes with the stage.
  [[nodiscard]] std::string makeFolder(const std::string& name);

  // An application beside that one; the caller starts it.
  [[nodiscard]] std::unique_ptr<TargetApplication> makeTarget(TargetKind kind);

 private:
  QTemporaryDir m_folder;
  PrivateXServer m_server;
  Environment m_environment;
  XConnection m_connection;
  SessionBus m_bus;
  WindowManager m_windowManager;
  Person m_person;
  std::unique_ptr<ProgramUnderTest> m_program;
  std::unique_ptr<TargetApplication> m_target;
  int m_folderCount = 0;
};

}  // namespace zarvy::e2e
