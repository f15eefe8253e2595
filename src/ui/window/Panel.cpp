#include "ui/window/Panel.h"

#include <algorithm>

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace zarvy {
namespace {

// What a window manager draws around a window and above it; none tells before it has done so.
constexpr QSize usualFrame(8, 40);

}  // namespace

void Panel::setDelegate(std::weak_ptr<const WindowDelegate> delegate) {
  m_delegate = std::move(delegate);
}

void Panel::center() {
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  fitInto(screen->availableGeometry());
}

void Panel::fitInto(const QRect& desk) {
  const QSize frame = windowFlags() & Qt::FramelessWindowHint ? QSize(0, 0) : usualFrame;
  const QSize room = desk.size() - frame;
  const QSize fitting = size().boundedTo(room);
  if (minimumSize() == maximumSize()) {
    setFixedSize(fitting);
  } else {
    setMinimumSize(minimumSize().boundedTo(room));
    resize(fitting);
  }
  const QPoint lowest = desk.topLeft() + QPoint(room.width(), room.height()) -
                        QPoint(fitting.width(), fitting.height());
  const QPoint middle = desk.center() - rect().center();
  move(std::min(middle.x(), lowest.x()), std::min(middle.y(), lowest.y()));
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
