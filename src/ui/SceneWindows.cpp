#include "ui/SceneWindows.h"

#include <algorithm>

#include "app/AppState.h"
#include "ui/window/BringForward.h"

namespace zarvy {

SceneWindows::~SceneWindows() {
  for (const auto& window : m_windows) delete window.data();
}

void SceneWindows::open(Scene scene) {
  if (SceneWindow* const known = openWindow(scene)) return bringForward(*known, m_workspace);
  const SceneRow& row = rowOf(scene);
  SceneWindow& window = make(row);
  row.prepare(m_state);
  showInFront(window, m_workspace);
}

void SceneWindows::comeForwardWith(Scene scene) {
  m_state.presence().becomeRegularIfHidden();
  open(scene);
}

SceneWindow* SceneWindows::openWindow(Scene scene) const {
  const auto found = std::find_if(m_windows.begin(), m_windows.end(), [scene](const auto& window) {
    return window && window->scene() == scene && !window->isClosed();
  });
  return found == m_windows.end() ? nullptr : found->data();
}

SceneWindow& SceneWindows::make(const SceneRow& row) {
  const SceneServices services{m_state, [this](Scene next) { open(next); }};
  auto window = std::make_unique<SceneWindow>(row, row.make(services));
  SceneWindow& made = *window;
  QObject::connect(&made, &QObject::destroyed, &m_state.presence(),
                   &DesktopPresence::restoreAccessoryPolicyIfNoWindows);
  std::erase_if(m_windows, [](const auto& one) { return one.isNull(); });
  m_windows.emplace_back(window.release());
  return made;
}

}  // namespace zarvy
