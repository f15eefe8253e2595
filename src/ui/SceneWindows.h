#pragma once

#include <functional>
#include <map>
#include <memory>

#include <QPointer>
#include <QString>
#include <QWidget>

namespace zarvy {

class AppState;
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
  void comeForwardWith(const QString& id);

  // Brings the window of this id to the front, and makes it where it is not open.
  void open(const QString& id);

 private:
  [[nodiscard]] std::unique_ptr<QWidget> make(const QString& id);
  void appear(const QString& id, QWidget& window);

  AppState& m_state;
  Workspace& m_workspace;
  std::map<QString, QPointer<QWidget>> m_windows;  // by id; a closed window deletes itself
};

}  // namespace zarvy
