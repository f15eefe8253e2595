#pragma once

#include <vector>

#include <QPointer>

#include "ui/SceneWindow.h"

namespace zarvy {

class Workspace;

// Opens the windows of the program, and knows which are open.
class SceneWindows {
 public:
  // Both outlive this object.
  SceneWindows(AppState& state, Workspace& workspace) : m_state(state), m_workspace(workspace) {}
  ~SceneWindows();
  SceneWindows(const SceneWindows&) = delete;
  SceneWindows& operator=(const SceneWindows&) = delete;

  // The open step of the menu: the program takes its place among the applications of the desktop,
  // and then as below.
  void comeForwardWith(Scene scene);

  // Brings the window of this scene to the front, and makes it where it is not open.
  void open(Scene scene);

 private:
  [[nodiscard]] SceneWindow* openWindow(Scene scene) const;
  [[nodiscard]] SceneWindow& make(const SceneRow& row);

  AppState& m_state;
  Workspace& m_workspace;
  std::vector<QPointer<SceneWindow>> m_windows;  // those too that are only still there
};

}  // namespace zarvy
