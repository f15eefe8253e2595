#include "ui/window/Panel.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace zarvy {

void Panel::setDelegate(std::weak_ptr<const WindowDelegate> delegate) {
  m_delegate = std::move(delegate);
}

void Panel::center() {
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect desk = screen->availableGeometry();
  setMinimumSize(minimumSize().boundedTo(desk.size()));
  resize(size().boundedTo(desk.size()));
  move(desk.center() - rect().center());
}

void Panel::DeleteLater::operator()(Panel* panel) const {
  panel->hide();
  panel->deleteLater();
}

void Panel::closeEvent(QCloseEvent* event) {
  event->accept();
  if (const auto delegate = m_delegate.lock()) delegate->windowWillClose();
}

}  // namespace zarvy
