#include "ui/quicksearch/QuickSearchRow.h"

#include "ui/quicksearch/QuickSearchModel.h"
#include "ui/style/FolderTint.h"

namespace zarvy {

TwoLineRow QuickSearchRow::rowAt(const QModelIndex& index) const {
  const auto folder = index.data(QuickSearchModel::folderColorRole).value<FolderColor>();
  return {.title = index.data(Qt::DisplayRole).toString(),
          .detail = index.data(QuickSearchModel::triggerRole).toString(),
          .dot = tintOf(folder)};
}

}  // namespace zarvy
