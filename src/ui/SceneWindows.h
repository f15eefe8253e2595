#pragma once

#include <functional>
#include <map>
#include <memory>

#include <QPointer>
#include <QString>
#include <QWidget>

namespace zarvy {

class AppState;

// Opens the windows of the program, and knows which are open.
class SceneWindows {
 public:
  // `state` outlives this object.
  explicit SceneWindows(AppState& state) : m_state(state) {}
  ~SceneWindows();
  SceneWindows(const SceneWindows&) = delete;
  SceneWindows& operator=(const SceneWindows&) = delete;

  // Brings the window of this id to the front, and makes it where it is not open.
  void open(const QString& id);

 private:
  [[nodiscard]] std::unique_ptr<QWidget> make(const QString& id);

  AppState& m_state;
  std::map<QString, QPointer<QWidget>> m_windows;  // by id; a closed window deletes itself
};

}  // namespace zarvy
