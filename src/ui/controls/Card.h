#pragma once

#include <vector>

#include <QWidget>

class QVBoxLayout;

namespace zarvy {

// Rows one under the other on a rounded ground of the window's colour, with lines between those
// that show.
class Card : public QWidget {
  Q_OBJECT

 public:
  static constexpr int horizontalPadding = 12;  // in logical pixels

  explicit Card(QWidget* parent);

  // Takes `row` over.
  void addRow(QWidget& row);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* m_column;
  std::vector<QWidget*> m_rows;
};

}  // namespace zarvy
