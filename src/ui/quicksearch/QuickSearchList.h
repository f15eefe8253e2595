#pragma once

#include <QListView>

namespace zarvy {

// The results. What is selected in it is told by its owner alone: the pointer only clicks, which
// clicked() reports.
class QuickSearchList final : public QListView {
  Q_OBJECT

 public:
  explicit QuickSearchList(QWidget* parent);

  // Selects `row`, where it is one, and brings it to the middle as far as the ends allow. A screen
  // reader is told that it has the focus, though the keyboard stays where it is.
  void select(int row);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
      const QModelIndex& index, const QEvent* event) const override;
};

}  // namespace zarvy
