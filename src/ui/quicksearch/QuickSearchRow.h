#pragma once

#include <QStyledItemDelegate>

namespace zarvy {

// Draws a row of the results: the folder's colour, the title, and the trigger below it. All rows
// are of one height.
class QuickSearchRow final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override;
};

}  // namespace zarvy
