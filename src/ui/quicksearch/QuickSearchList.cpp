#include "ui/quicksearch/QuickSearchList.h"

#include "ui/controls/SlimScrollBar.h"
#include "ui/quicksearch/QuickSearchModel.h"
#include "ui/style/SystemColors.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

TwoLineRow QuickSearchRow::rowAt(const QModelIndex& index) const {
  const auto folder = index.data(QuickSearchModel::folderColorRole).value<FolderColor>();
  return {.title = index.data(Qt::DisplayRole).toString(),
          .detail = index.data(QuickSearchModel::triggerRole).toString(),
          .dot = tintOf(folder)};
}

QuickSearchList::QuickSearchList(QWidget* parent) : QListView(parent) {
  setAccessibleName(u"Snippets"_s);
  setItemDelegate(new QuickSearchRow(this));
  setUniformItemSizes(true);
  setVerticalScrollMode(ScrollPerPixel);
  setVerticalScrollBar(new SlimScrollBar(this));
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // rows keep their width as the list shrinks
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAutoScroll(false);
  setFocusPolicy(Qt::NoFocus);
  setFrameShape(NoFrame);
  viewport()->setAutoFillBackground(false);
}

void QuickSearchList::select(int row) {
  const QModelIndex index = model()->index(row, 0);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
  scrollTo(index, PositionAtCenter);
}

// Where the middle is depends on the height.
void QuickSearchList::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  scrollTo(currentIndex(), PositionAtCenter);
}

QItemSelectionModel::SelectionFlags QuickSearchList::selectionCommand(
    const QModelIndex& /*index*/, const QEvent* /*event*/) const {
  return QItemSelectionModel::NoUpdate;
}

}  // namespace zarvy
