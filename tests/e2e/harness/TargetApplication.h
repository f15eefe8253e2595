#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/EditorState.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

// What a target needs of the desktop that it is started on.
struct TargetSetting {
  const XConnection& connection;
  Environment environment;
  std::string folder;                // exists, empty, the target's alone
  std::string accessibilityAddress;  // of the accessibility bus
};

// A real application with one place to type into, and a way to read back exactly what that holds.
// One thread. Everything throws std::runtime_error where the application does not do its part.
class TargetApplication {
 public:
  explicit TargetApplication(TargetSetting setting) : m_setting(std::move(setting)) {}
  TargetApplication(const TargetApplication&) = delete;
  TargetApplication& operator=(const TargetApplication&) = delete;
  virtual ~TargetApplication() = default;

  // Starts it, and returns when it has the keyboard focus and shows what `person` types.
  void start(Person& person);

  [[nodiscard]] virtual EditorState state() = 0;

  // Empties it, behind the back of the keyboard.
  void clear();

  // True once the application holds `wanted`; false at the deadline.
  [[nodiscard]] virtual bool waitForState(const EditorState& wanted,
                                          std::chrono::milliseconds deadline);

  // Ends the application at once.
  void close();

 protected:
  [[nodiscard]] virtual ProcessSpecification program() = 0;

  // Called once the process runs: connects to it and returns when state() can be asked.
  virtual void connect() = 0;
  virtual void empty() = 0;

  [[nodiscard]] const TargetSetting& setting() const { return m_setting; }
  [[nodiscard]] ChildProcess& process() { return *m_process; }

 private:
  void bringToFront(const std::vector<ManagedWindow>& before);
  [[nodiscard]] bool isFocused(xcb_window_t window) const;

  TargetSetting m_setting;
  std::optional<ChildProcess> m_process;
};

}  // namespace zarvy::e2e
