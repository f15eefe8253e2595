#include "ui/window/BringForward.h"

#include <memory>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QWidget>
#include <QWindow>

#include "platform/Workspace.h"

namespace zarvy {
namespace {

// Calls bringForward() for a window as soon as it is really on the screen: before that no window
// manager knows it, and a request for it would be lost. Belongs to the window.
class ForwardOnceExposed final : public QObject {
 public:
  // `workspace` outlives the window.
  ForwardOnceExposed(QWidget& window, Workspace& workspace)
      : QObject(&window), m_window(window), m_workspace(workspace) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* const handle = qobject_cast<const QWindow*>(watched);
    if (event->type() == QEvent::Expose && handle && handle->isExposed()) {
      watched->removeEventFilter(this);
      deleteLater();
      bringForward(m_window, m_workspace);
    }
    return false;
  }

 private:
  QWidget& m_window;
  Workspace& m_workspace;
};

}  // namespace

void bringForward(QWidget& window, Workspace& workspace) {
  window.raise();
  window.activateWindow();
  RunningApplication own;
  own.processIdentifier = QCoreApplication::applicationPid();
  own.bundleIdentifier = workspace.ownBundleIdentifier();
  own.nativeWindow = window.winId();
  workspace.activate(own);
}

void showInFront(QWidget& window, Workspace& workspace) {
  window.winId();  // makes the native window, whose events tell when it is on the screen
  auto forward = std::make_unique<ForwardOnceExposed>(window, workspace);
  window.windowHandle()->installEventFilter(forward.release());  // the window owns it
  window.show();
}

}  // namespace zarvy
