#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QList>
#include <QSize>
#include <QString>
#include <QWidget>

namespace zarvy {

class AppState;

// The windows of the program, each of which is open at most once.
enum class Scene { manageSnippets, permissionRequest, settings, statistics, globalVariables };

// What the content of a window works with.
struct SceneServices {
  AppState& state;
  std::function<void(Scene)> open;  // brings that one to the front
};

struct SceneRow {
  Scene scene;
  QString id;  // by which a window manager knows it
  QString title;
  std::optional<QSize> defaultSize;  // absent: that of its content, which it keeps to
  bool closesOnEscape = false;       // where its content has no use for the key
  std::function<std::unique_ptr<QWidget>(const SceneServices&)> make;
  std::function<void(AppState&)> prepare = [](AppState&) {};  // before each opening
};

// One row a scene, in their order. A new screen is a new row.
[[nodiscard]] const QList<SceneRow>& allScenes();
[[nodiscard]] const SceneRow& rowOf(Scene scene);

}  // namespace zarvy
