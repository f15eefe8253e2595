#include "ui/controls/TwoLineRows.h"

#include <algorithm>

#include <QFontMetrics>
#include <QPainter>

#include "ui/style/OneLine.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr int rowMargin = 8;       // between the edge and the background of the selected row
constexpr int insidePadding = 10;  // between that and what is in it
constexpr int aboveAndBelow = 6;
constexpr int betweenLines = 1;
constexpr double selectionRadius = 6;
constexpr int dotExtent = 8;
constexpr double selectionOpacity = 0.22;

// At the left whatever its direction, in which it is still read.
void drawLine(QPainter& painter, const QRect& area, const QFont& font, const QString& text) {
  const QString line = oneLine(text);
  painter.setFont(font);
  painter.setLayoutDirection(line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(area, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                   QFontMetrics(font).elidedText(line, Qt::ElideRight, area.width()));
}

// The colour that the row is on.
QColor drawGround(QPainter& painter, const QStyleOptionViewItem& option, QPalette::ColorRole role) {
  const QColor plain = activeColor(option.palette, role);
  if (!(option.state & QStyle::State_Selected)) return plain;
  const QColor accent = activeColor(option.palette, QPalette::Highlight);
  painter.setPen(Qt::NoPen);
  painter.setBrush(withOpacity(accent, selectionOpacity));
  painter.drawRoundedRect(option.rect.adjusted(rowMargin, 0, -rowMargin, 0), selectionRadius,
                          selectionRadius);
  return blended(plain, accent, selectionOpacity);
}

// What is left of `area` in front of it.
QRect drawLabel(QPainter& painter, QRect area, const FolderLabel& label,
                const QStyleOptionViewItem& option, const QColor& ground) {
  QRect own({}, label.sizeHint(option.font).boundedTo({area.width() / 2, area.height()}));
  own.moveCenter(area.center());
  own.moveRight(area.right());
  label.draw(painter, own, option.font, option.palette, ground);
  area.setRight(own.left() - insidePadding);
  return area;
}

}  // namespace

void TwoLineRows::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const TwoLineRow row = rowAt(index);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const QColor ground = drawGround(*painter, option, m_look.ground);
  QRect inside =
      option.rect.adjusted(rowMargin + insidePadding, 0, -(rowMargin + insidePadding), 0);
  if (row.dot) {
    const double top = inside.top() + (inside.height() - dotExtent) / 2.0;
    drawColorDot(*painter, QRectF(inside.left(), top, dotExtent, dotExtent), *row.dot,
                 option.palette);
    inside.setLeft(inside.left() + dotExtent + insidePadding);
  }
  if (row.label) inside = drawLabel(*painter, inside, *row.label, option, ground);
  const QFont titleFont = styledFont(option.font, m_look.title);
  const QFont detailFont = styledFont(option.font, m_look.detail);
  QRect title = inside.adjusted(0, aboveAndBelow, 0, 0);
  title.setHeight(QFontMetrics(titleFont).height());
  QRect detail = title.translated(0, title.height() + betweenLines);
  detail.setHeight(QFontMetrics(detailFont).height());
  painter->setPen(activeColor(option.palette, QPalette::WindowText));
  drawLine(*painter, title, titleFont, row.title);
  painter->setPen(secondaryColor(option.palette, ground));
  drawLine(*painter, detail, detailFont, row.detail);
  painter->restore();
}

QSize TwoLineRows::sizeHint(const QStyleOptionViewItem& option,
                            const QModelIndex& /*index*/) const {
  const int lines = QFontMetrics(styledFont(option.font, m_look.title)).height() + betweenLines +
                    QFontMetrics(styledFont(option.font, m_look.detail)).height();
  return {0, lines + 2 * aboveAndBelow};
}

}  // namespace zarvy
