#pragma once

#include "platform/Workspace.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

class Connection;

// Applications as the window manager knows them: _NET_ACTIVE_WINDOW, _NET_WM_PID, WM_CLASS.
class X11Workspace final : public Workspace {
 public:
  X11Workspace(Connection& connection, QString ownBundleIdentifier);

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
  [[nodiscard]] std::optional<RunningApplication> runningApplication(
      qint64 processIdentifier) const override;
  [[nodiscard]] bool isActive(const RunningApplication& application) const override;
  void activate(const RunningApplication& application) override;
  [[nodiscard]] std::optional<QString> ownBundleIdentifier() const override;

 private:
  [[nodiscard]] RunningApplication applicationOf(xcb_window_t window) const;

  Connection& m_connection;
  WindowProperties m_windows;
  QString m_ownBundleIdentifier;
};

}  // namespace zarvy::x11
