#pragma once

#include <QListView>

#include "ui/controls/TwoLineRows.h"

namespace zarvy {

// Draws a row of the results: the folder's colour, the title, and the trigger below it.
class QuickSearchRow final : public TwoLineRows {
  Q_OBJECT

 public:
  using TwoLineRows::TwoLineRows;

 protected:
  [[nodiscard]] TwoLineRow rowAt(const QModelIndex& index) const override;
};

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
