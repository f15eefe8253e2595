#pragma once

#include <QObject>

#include "app/presence/OpenWindows.h"
#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "platform/ActivationPolicy.h"
#include "platform/LoginItem.h"

namespace zarvy {

class Library;

// What the desktop's presence of the program takes. All of it outlives AppState and what AppState
// posts.
struct PresenceServices {
  ActivationPolicy& policy;
  LoginItem& loginItem;
  const OpenWindows& windows;
  Scheduler& scheduler;
  LineOutput& output;
};

// Whether the program stands among the applications of the desktop, beside its icon in the tray,
// and whether the desktop starts it. With `hideDockIcon` set it stands there only while a window is
// open. Main thread.
class DesktopPresence final : public QObject {
  Q_OBJECT

 public:
  // Both outlive this object.
  DesktopPresence(const Library& library, const PresenceServices& services);

  // Follows the setting as it now stands, whatever windows are open.
  void applyHideDockIcon();

  // A window is about to open: the program stands among the applications while it is.
  void becomeRegularIfHidden();

  // A window has closed: 0.1 s later, when it is gone, the program leaves the applications, if that
  // was the last one.
  void restoreAccessoryPolicyIfNoWindows();

  // Follows the setting as it now stands. Prints a line where that cannot be done.
  void applyLaunchAtLogin();

 private:
  void restoreAccessoryPolicy();
  [[nodiscard]] bool hasRealWindow() const;

  const Library& m_library;
  const PresenceServices m_services;
};

}  // namespace zarvy
