#include "ui/SceneWindows.h"

#include <algorithm>
#include <memory>

#include <QGuiApplication>
#include <QScreen>

#include "app/AppState.h"
#include "ui/ComingWindow.h"
#include "ui/PermissionRequestView.h"
#include "ui/Scenes.h"

namespace zarvy {

SceneWindows::~SceneWindows() {
  for (const auto& [id, window] : m_windows) delete window.data();
}

void SceneWindows::open(const QString& id) {
  QPointer<QWidget>& known = m_windows[id];
  if (!known) known = make(id).release();
  QWidget& window = *known;
  window.show();
  window.raise();
  window.activateWindow();
}

std::unique_ptr<QWidget> SceneWindows::make(const QString& id) {
  const auto found = std::find_if(scenes().begin(), scenes().end(),
                                  [&id](const Scene& scene) { return scene.id == id; });
  std::unique_ptr<QWidget> window;
  if (id == scene::permissionRequest) {
    window =
        std::make_unique<PermissionRequestView>(m_state, [this] { open(scene::manageSnippets); });
  } else {
    window = std::make_unique<ComingWindow>(id);
  }
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(found->title);
  if (found->defaultSize.isNull()) {
    window->setFixedSize(window->sizeHint());
  } else {
    window->resize(found->defaultSize);
  }
  const QRect desk = QGuiApplication::primaryScreen()->availableGeometry();
  window->move(desk.center() - window->rect().center());
  return window;
}

}  // namespace zarvy
