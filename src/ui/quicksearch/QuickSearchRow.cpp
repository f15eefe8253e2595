#include "ui/quicksearch/QuickSearchRow.h"

#include <QFontMetrics>
#include <QPainter>

#include "ui/quicksearch/QuickSearchModel.h"
#include "ui/style/FolderTint.h"
#include "ui/style/Fonts.h"
#include "ui/style/OneLine.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

constexpr int margin = 8;    // between the edge and the background of the selected row
constexpr int padding = 10;  // between that and what is in it
constexpr int verticalPadding = 6;
constexpr int lineSpacing = 1;
constexpr double rowRadius = 6;
constexpr int circleExtent = 8;
constexpr int textIndent = margin + padding + circleExtent + padding;
constexpr double selectionOpacity = 0.22;

// At the left whatever its direction, in which it is read all the same.
void drawLine(QPainter& painter, const QRect& area, const QFont& font, const QString& text) {
  const QString line = oneLine(text);
  painter.setFont(font);
  painter.setLayoutDirection(line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(area, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                   QFontMetrics(font).elidedText(line, Qt::ElideRight, area.width()));
}

}  // namespace

void QuickSearchRow::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  const QRect row = option.rect;
  QColor ground = activeColor(option.palette, QPalette::Window);
  if (option.state & QStyle::State_Selected) {
    const QColor accent = activeColor(option.palette, QPalette::Highlight);
    ground = blended(ground, accent, selectionOpacity);
    painter->setBrush(withOpacity(accent, selectionOpacity));
    painter->drawRoundedRect(row.adjusted(margin, 0, -margin, 0), rowRadius, rowRadius);
  }
  const auto folder = index.data(QuickSearchModel::folderColorRole).value<FolderColor>();
  painter->setBrush(systemColor(tintOf(folder), option.palette));
  painter->drawEllipse(QRectF(row.left() + margin + padding,
                              row.top() + (row.height() - circleExtent) / 2.0, circleExtent,
                              circleExtent));
  const QFont lowerFont = styledFont(option.font, textStyle::trigger);
  QRect title = row.adjusted(textIndent, verticalPadding, -(margin + padding), 0);
  title.setHeight(QFontMetrics(option.font).height());
  QRect trigger = title.translated(0, title.height() + lineSpacing);
  trigger.setHeight(QFontMetrics(lowerFont).height());
  painter->setPen(activeColor(option.palette, QPalette::WindowText));
  drawLine(*painter, title, option.font, index.data(Qt::DisplayRole).toString());
  painter->setPen(secondaryColor(option.palette, ground));
  drawLine(*painter, trigger, lowerFont, index.data(QuickSearchModel::triggerRole).toString());
  painter->restore();
}

QSize QuickSearchRow::sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& /*index*/) const {
  const int lines = QFontMetrics(option.font).height() + lineSpacing +
                    QFontMetrics(styledFont(option.font, textStyle::trigger)).height();
  return {0, lines + 2 * verticalPadding};
}

}  // namespace zarvy
