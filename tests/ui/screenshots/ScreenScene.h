#pragma once

#include <functional>
#include <memory>

#include <QList>
#include <QString>

namespace zarvy {

// Something to take a picture of.
struct ScreenScene {
  QString name;  // as in the name of the picture

  // Opens the one window of the scene. What it gives keeps the window open.
  std::function<std::shared_ptr<void>()> open;

  // Brings the scene to where the picture is taken, once the window has the keyboard.
  std::function<void()> prepare = [] {};
};

[[nodiscard]] QList<ScreenScene> fillInScenes();
[[nodiscard]] QList<ScreenScene> quickSearchScenes();
[[nodiscard]] QList<ScreenScene> setupScenes();

// The table: all that there are.
[[nodiscard]] inline QList<ScreenScene> screenScenes() {
  return fillInScenes() + quickSearchScenes() + setupScenes();
}

}  // namespace zarvy
