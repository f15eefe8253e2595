#include "ui/window/Panel.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

namespace zarvy {
namespace {

// What a window manager draws around a window and above it; none tells before it has done so.
constexpr QSize usualFrame(8, 40);

}  // namespace

void Panel::setDelegate(std::weak_ptr<const WindowDelegate> delegate) {
  m_delegate = std::move(delegate);
}

void Panel::centerOn(QScreen& screen) {
  setScreen(&screen);
  fitInto(screen.availableGeometry());
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

// A control keeps a press to itself, a button also while it is disabled.
void Panel::mousePressEvent(QMouseEvent* event) {
  QWidget::mousePressEvent(event);
  const bool takesHold = event->button() == Qt::LeftButton;
  m_heldAt = takesHold ? std::optional(event->globalPosition().toPoint()) : std::nullopt;
}

// A mere click moves nothing: the window manager would not hear of its end, and go on moving.
void Panel::mouseMoveEvent(QMouseEvent* event) {
  QWidget::mouseMoveEvent(event);
  if (!m_heldAt || !(event->buttons() & Qt::LeftButton)) return;
  const QPoint way = event->globalPosition().toPoint() - *m_heldAt;
  if (way.manhattanLength() < QApplication::startDragDistance()) return;
  m_heldAt.reset();
  startMove();
}

bool Panel::startMove() {
  return windowHandle()->startSystemMove();
}

}  // namespace zarvy
