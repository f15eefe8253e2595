#pragma once

#include <QWidget>

namespace zarvy {

// A part of a split view. The divider leaves it its least height, a window that is too low for all
// of its parts does not.
class Pane final : public QWidget {
 public:
  // `leastHeight` in logical pixels.
  Pane(int leastHeight, QWidget* parent) : QWidget(parent), m_leastHeight(leastHeight) {}

  [[nodiscard]] QSize minimumSizeHint() const override {
    return {QWidget::minimumSizeHint().width(), m_leastHeight};
  }

 private:
  const int m_leastHeight;
};

}  // namespace zarvy
