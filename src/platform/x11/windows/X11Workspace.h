#pragma once

#include "platform/Workspace.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

class Connection;

// Applications as the window manager knows them: _NET_ACTIVE_WINDOW, _NET_WM_PID, WM_CLASS. One
// that has no window it knows is named after its process.
class X11Workspace final : public Workspace {
 public:
  X11Workspace(Connection& connection, QString ownBundleIdentifier);

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
  [[nodiscard]] std::optional<QRect> frontmostWindowArea() const override;
  [[nodiscard]] std::optional<RunningApplication> runningApplication(
      qint64 processIdentifier) const override;
  [[nodiscard]] bool isActive(const RunningApplication& application) const override;
  bool activate(const RunningApplication& application) override;
  [[nodiscard]] std::optional<QString> ownBundleIdentifier() const override;

 private:
  [[nodiscard]] bool isOf(const RunningApplication& application, xcb_window_t window) const;
  void requestActivation(xcb_window_t root, xcb_window_t window);
  void focus(xcb_window_t window);
  [[nodiscard]] xcb_window_t livingWindow(const RunningApplication& application) const;
  [[nodiscard]] std::optional<RunningApplication> applicationWithoutWindow(
      qint64 processIdentifier) const;
  [[nodiscard]] RunningApplication applicationOf(xcb_window_t window) const;

  Connection& m_connection;
  WindowProperties m_windows;
  QString m_ownBundleIdentifier;
};

}  // namespace zarvy::x11
