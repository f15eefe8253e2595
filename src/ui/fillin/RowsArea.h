#pragma once

#include <QScrollArea>

namespace zarvy {

// Scrolls through the rows of a form, and keeps in sight what has the keyboard: the row that Tab
// has come to, from wherever, and the caret in it.
class RowsArea final : public QScrollArea {
  Q_OBJECT

 public:
  // Takes `rows` over.
  RowsArea(QWidget* rows, QWidget* parent);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void followFocus();
  void followCaret();
  [[nodiscard]] QWidget* focusedInput() const;
  void bringIntoSight(const QWidget& input, const QRect& part);
};

}  // namespace zarvy
