#include "ui/fillin/RowsArea.h"

#include <algorithm>

#include <QApplication>
#include <QInputMethod>
#include <QScrollBar>

#include "ui/fillin/FieldRow.h"

namespace zarvy {
namespace {

constexpr int margin = 4;  // between what is brought into sight and the edge

const QWidget* rowOf(const QWidget* input) {
  while (input && !qobject_cast<const FieldRow*>(input)) input = input->parentWidget();
  return input;
}

}  // namespace

RowsArea::RowsArea(QWidget* rows, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  setWidget(rows);
  rows->setAutoFillBackground(false);
  connect(qApp, &QApplication::focusChanged, this, &RowsArea::followFocus);
  connect(QGuiApplication::inputMethod(), &QInputMethod::cursorRectangleChanged, this,
          &RowsArea::followCaret);
}

void RowsArea::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  followFocus();
}

// What the pointer has taken hold of stays under it. Of what does not fit, the caret counts most.
void RowsArea::followFocus() {
  const QWidget* const input = focusedInput();
  if (input == nullptr || QGuiApplication::mouseButtons() != Qt::NoButton) return;
  if (const QWidget* const row = rowOf(input)) bringIntoSight(*row, row->rect());
  bringIntoSight(*input, input->rect());
  followCaret();
}

void RowsArea::followCaret() {
  const QWidget* const input = focusedInput();
  if (input == nullptr || !input->testAttribute(Qt::WA_InputMethodEnabled)) return;
  bringIntoSight(*input, input->inputMethodQuery(Qt::ImCursorRectangle).toRect());
}

QWidget* RowsArea::focusedInput() const {
  QWidget* const focused = QApplication::focusWidget();
  return focused && widget()->isAncestorOf(focused) ? focused : nullptr;
}

// The beginning, where the whole does not fit.
void RowsArea::bringIntoSight(const QWidget& input, const QRect& part) {
  const int top = input.mapTo(widget(), part.topLeft()).y() - margin;
  const int bottom = top + part.height() + 2 * margin;
  QScrollBar& bar = *verticalScrollBar();
  const int lowest = std::max(bar.value(), bottom - viewport()->height());
  bar.setValue(std::min(lowest, top));
}

}  // namespace zarvy
