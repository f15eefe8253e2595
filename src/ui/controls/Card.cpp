#include "ui/controls/Card.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/style/Lines.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr int rowPadding = 9;  // above and below each
constexpr double cardRadius = 8;

}  // namespace

Card::Card(QWidget* parent) : QWidget(parent), m_column(new QVBoxLayout(this)) {
  m_column->setContentsMargins(horizontalPadding, rowPadding, horizontalPadding, rowPadding);
  m_column->setSpacing(2 * rowPadding + 1);
}

void Card::addRow(QWidget& row) {
  m_column->addWidget(&row);
  m_rows.push_back(&row);
}

void Card::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor line = separatorColor(palette());
  painter.setPen(QPen(line, lineWidth(painter)));
  painter.setBrush(palette().color(QPalette::Window));
  painter.drawRoundedRect(outlineWithin(painter, rect()), cardRadius, cardRadius);
  bool isFirst = true;
  for (const QWidget* row : m_rows) {
    if (!row->isVisibleTo(this)) continue;
    const int y = row->y() - rowPadding - 1;
    if (!isFirst)
      drawRule(painter, {horizontalPadding, y, width() - 2 * horizontalPadding, 1}, line);
    isFirst = false;
  }
}

}  // namespace zarvy
