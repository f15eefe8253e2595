#include "ui/SceneWindows.h"

#include <algorithm>
#include <memory>

#include <QGuiApplication>
#include <QScreen>

#include "app/AppState.h"
#include "ui/ComingWindow.h"
#include "ui/PermissionRequestView.h"
#include "ui/Scenes.h"
#include "ui/window/BringForward.h"

namespace zarvy {

SceneWindows::~SceneWindows() {
  for (const auto& [id, window] : m_windows) delete window.data();
}

void SceneWindows::open(const QString& id) {
  QPointer<QWidget>& known = m_windows[id];
  if (known) return bringForward(*known, m_workspace);
  known = make(id).release();
  appear(id, *known);
}

void SceneWindows::comeForwardWith(const QString& id) {
  m_state.presence().becomeRegularIfHidden();
  open(id);
}

void SceneWindows::appear(const QString& id, QWidget& window) {
  QObject::connect(&window, &QObject::destroyed, &m_state.presence(),
                   &DesktopPresence::restoreAccessoryPolicyIfNoWindows);
  if (id == scene::manageSnippets) {
    m_state.loadData();
    m_state.expansion().warmUp();
  }
  showInFront(window, m_workspace);
}

std::unique_ptr<QWidget> SceneWindows::make(const QString& id) {
  const auto found = std::find_if(scenes().begin(), scenes().end(),
                                  [&id](const Scene& scene) { return scene.id == id; });
  std::unique_ptr<QWidget> window;
  if (id == scene::permissionRequest) {
    window = std::make_unique<PermissionRequestView>(m_state.expansion(),
                                                     [this] { open(scene::manageSnippets); });
  } else {
    window = std::make_unique<ComingWindow>(id, m_state);
  }
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(found->title);
  if (found->defaultSize) {
    window->resize(*found->defaultSize);
  } else {
    window->setFixedSize(window->sizeHint());
  }
  const QRect desk = QGuiApplication::primaryScreen()->availableGeometry();
  window->move(desk.center() - window->rect().center());
  return window;
}

}  // namespace zarvy
