#pragma once

#include <QScrollBar>

namespace zarvy {

// A scroll bar of which only the handle shows, so that what is behind it does.
class SlimScrollBar final : public QScrollBar {
  Q_OBJECT

 public:
  // A vertical one.
  explicit SlimScrollBar(QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zarvy
