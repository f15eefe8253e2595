#include "ui/fillin/FillInPanel.h"

#include <utility>

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QSize leastSize(350, 400);
constexpr QSize usualSize(450, 550);

// Qt takes these three characters for the place of a mark, unless they stand there twice.
QString literalTitle(QString title) {
  return title.replace(u"[*]"_s, u"[*][*]"_s);
}

}  // namespace

FillInPanel::FillInPanel(std::unique_ptr<QWidget> content, const QString& title) {
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                 Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
  setWindowTitle(literalTitle(title));
  setWindowRole(u"fill-in"_s);
  setMinimumSize(leastSize);
  resize(usualSize);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(content.release());
}

void FillInPanel::setDelegate(std::weak_ptr<const WindowDelegate> delegate) {
  m_delegate = std::move(delegate);
}

void FillInPanel::center() {
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect desk = screen->availableGeometry();
  resize(size().boundedTo(desk.size()));
  move(desk.center() - rect().center());
}

void FillInPanel::closeEvent(QCloseEvent* event) {
  event->accept();
  if (const auto delegate = m_delegate.lock()) delegate->windowWillClose();
}

void FillInPanel::mousePressEvent(QMouseEvent* event) {
  QWidget::mousePressEvent(event);
  if (event->button() == Qt::LeftButton) windowHandle()->startSystemMove();
}

}  // namespace zarvy
