#pragma once

#include <csignal>
#include <string>

#include "e2e/harness/ChildProcess.h"
#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// openbox gives the keyboard to whichever window appears; xfwm4 is told to prevent that: a window
// that nobody has called for is to wait until the user turns to it.
enum class WindowManagerKind { openbox, xfwm4 };

[[nodiscard]] std::string nameOf(WindowManagerKind kind);

// Sends the window manager an event that says nothing. openbox reads events while it waits for
// something else and then leaves them lying until the next one comes: the only window of a test
// might never be shown. Whoever waits for a window does this each time they look.
void nudgeWindowManager(const XConnection& connection);

// A window manager that manages the windows of the display once constructed. `environment` is the
// desktop's; xfwm4 reads its settings over the session bus in it, from the folder of configuration
// that the bus has too. Throws std::runtime_error where it does not come up.
class WindowManager {
 public:
  WindowManager(WindowManagerKind kind, const XConnection& connection,
                const Environment& environment, const std::string& logFolder);

  // It does nothing more; what it has done stays.
  void stop() { m_process.sendSignal(SIGSTOP); }

 private:
  ChildProcess m_process;
};

}  // namespace zarvy::e2e
