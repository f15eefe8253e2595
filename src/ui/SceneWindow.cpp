#include "ui/SceneWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

namespace zarvy {

SceneWindow::SceneWindow(const SceneRow& row, std::unique_ptr<QWidget> content) : m_row(row) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(row.title);
  setWindowRole(row.id);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  QWidget* const shown = content.release();
  layout->addWidget(shown);
  if (row.defaultSize) {
    resize(*row.defaultSize);
  } else {
    setFixedSize(shown->sizeHint());
    shown->installEventFilter(this);
  }
  const QRect desk = QGuiApplication::primaryScreen()->availableGeometry();
  move(desk.center() - rect().center());
  auto* const closing = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this);
  connect(closing, &QShortcut::activated, this, &QWidget::close);
}

// At once, so that the user does not see it with a gap or cut off.
bool SceneWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) {
    setFixedSize(static_cast<QWidget*>(watched)->sizeHint());
  }
  return QWidget::eventFilter(watched, event);
}

void SceneWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  m_isClosed = true;
}

void SceneWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && m_row.closesOnEscape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace zarvy
