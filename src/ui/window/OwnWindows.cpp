#include "ui/window/OwnWindows.h"

#include <utility>

#include <QEvent>
#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>

namespace zarvy {

OwnWindows::OwnWindows(Listener onOpened, Listener onClosed)
    : m_onOpened(std::move(onOpened)), m_onClosed(std::move(onClosed)) {
  QCoreApplication::instance()->installEventFilter(this);
}

QList<OpenWindows::Window> OwnWindows::windows() const {
  QList<Window> all;
  for (const QWindow* window : QGuiApplication::topLevelWindows()) {
    all.append({window->title(), window->isVisible()});
  }
  return all;
}

bool OwnWindows::eventFilter(QObject* watched, QEvent* event) {
  const bool isExpose = event->type() == QEvent::Expose;
  const bool isEnd = event->type() == QEvent::PlatformSurface &&
                     static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
                         QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed;
  if (!isExpose && !isEnd) return false;
  const auto* const window = qobject_cast<const QWindow*>(watched);
  if (!window || !window->isTopLevel()) return false;
  if (isEnd) {
    m_onClosed(window->winId());
  } else if (window->isExposed()) {
    m_onOpened(window->winId());
  }
  return false;
}

}  // namespace zarvy
