#include "ui/OwnWindows.h"

#include <utility>

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

namespace zarvy {

OwnWindows::OwnWindows(std::function<void(quint64 nativeWindow)> onOpened)
    : m_onOpened(std::move(onOpened)) {
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
  if (event->type() == QEvent::Expose) {
    const auto* const window = qobject_cast<const QWindow*>(watched);
    if (window && window->isTopLevel() && window->isExposed()) m_onOpened(window->winId());
  }
  return false;
}

}  // namespace zarvy
