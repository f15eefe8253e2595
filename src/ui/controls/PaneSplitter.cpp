#include "ui/controls/PaneSplitter.h"

#include <utility>

#include <QKeyEvent>
#include <QPainter>
#include <QSplitterHandle>

#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr int graspWidth = 9;  // what the mouse can take hold of
constexpr QSizeF gripSize(28, 3);
constexpr QSizeF focusedGripSize(44, 7);
constexpr int keyStep = 16;

class PaneDivider final : public QSplitterHandle {
 public:
  PaneDivider(const QString& name, QSplitter* parent)
      : QSplitterHandle(parent->orientation(), parent) {
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(name);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawLine(painter);
    const QSizeF size = hasFocus() ? focusedGripSize : gripSize;
    QRectF grip({}, isUpright() ? size.transposed() : size);
    grip.moveCenter(QRectF(rect()).center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(hasFocus() ? focusColor(palette()) : outlineColor(palette()));
    painter.drawRoundedRect(grip, size.height() / 2, size.height() / 2);
  }

  void keyPressEvent(QKeyEvent* event) override {
    const int place = isUpright() ? x() : y();
    if (event->key() == (isUpright() ? Qt::Key_Left : Qt::Key_Up)) {
      return moveSplitter(place - keyStep);
    }
    if (event->key() == (isUpright() ? Qt::Key_Right : Qt::Key_Down)) {
      return moveSplitter(place + keyStep);
    }
    QSplitterHandle::keyPressEvent(event);
  }

  void focusInEvent(QFocusEvent* event) override {
    QSplitterHandle::focusInEvent(event);
    update();
  }

  void focusOutEvent(QFocusEvent* event) override {
    QSplitterHandle::focusOutEvent(event);
    update();
  }

 private:
  // Between panes that are side by side.
  [[nodiscard]] bool isUpright() const { return orientation() == Qt::Horizontal; }

  void drawLine(QPainter& painter) const {
    const QColor color = separatorColor(palette());
    if (isUpright()) {
      drawUprightRule(painter, {width() / 2, 0, 1, height()}, color);
    } else {
      drawRule(painter, {0, height() / 2, width(), 1}, color);
    }
  }
};

}  // namespace

QSize Pane::minimumSizeHint() const {
  const QSize own = QWidget::minimumSizeHint();
  return {m_least.width() > 0 ? m_least.width() : own.width(),
          m_least.height() > 0 ? m_least.height() : own.height()};
}

PaneSplitter::PaneSplitter(Qt::Orientation orientation, QString handleName, QWidget* parent)
    : QSplitter(orientation, parent), m_handleName(std::move(handleName)) {
  setHandleWidth(graspWidth);
  setChildrenCollapsible(false);
}

QSplitterHandle* PaneSplitter::createHandle() {
  return new PaneDivider(m_handleName, this);
}

}  // namespace zarvy
