#pragma once

#include <functional>
#include <optional>

#include <QMenu>

#include "ui/MenuEntries.h"

namespace zarvy {

class AppState;

// The menu behind the tray icon. Follows the state as it changes.
class MenuBarView final : public QMenu {
  Q_OBJECT

 public:
  // `openScene` brings the program forward and opens the window of that id; `quit` ends the
  // program. `state` outlives this object.
  MenuBarView(AppState& state, std::function<void(const QString& id)> openScene,
              std::function<void()> quit);

 private:
  void rebuild();
  void perform(MenuAction action);

  AppState& m_state;
  std::optional<MenuCircumstances> m_circumstances;  // of the entries that are there
  const std::function<void(const QString& id)> m_openScene;
  const std::function<void()> m_quit;
};

}  // namespace zarvy
