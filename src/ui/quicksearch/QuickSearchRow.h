#pragma once

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

}  // namespace zarvy
