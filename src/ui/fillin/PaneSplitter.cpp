#include "ui/fillin/PaneSplitter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSplitterHandle>

#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int handleHeight = 9;  // what the mouse can take hold of
constexpr QSizeF gripSize(28, 3);
constexpr QSizeF focusedGripSize(44, 7);
constexpr int keyStep = 16;

class PaneDivider final : public QSplitterHandle {
 public:
  PaneDivider(Qt::Orientation orientation, QSplitter* parent)
      : QSplitterHandle(orientation, parent) {
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(u"Size of the preview"_s);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor line = separatorColor(palette());
    drawRule(painter, {0, height() / 2, width(), 1}, line);
    QRectF grip({}, hasFocus() ? focusedGripSize : gripSize);
    grip.moveCenter(QRectF(rect()).center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(hasFocus() ? focusColor(palette()) : outlineColor(palette()));
    painter.drawRoundedRect(grip, grip.height() / 2, grip.height() / 2);
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Up) return moveSplitter(y() - keyStep);
    if (event->key() == Qt::Key_Down) return moveSplitter(y() + keyStep);
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
};

}  // namespace

PaneSplitter::PaneSplitter(QWidget* parent) : QSplitter(Qt::Vertical, parent) {
  setHandleWidth(handleHeight);
  setChildrenCollapsible(false);
}

QSplitterHandle* PaneSplitter::createHandle() {
  return new PaneDivider(orientation(), this);
}

}  // namespace zarvy
