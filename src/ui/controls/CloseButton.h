#pragma once

#include <QAbstractButton>

namespace zarvy {

// Closes a window that has no frame of the window manager's. For the pointer: the keyboard has a
// key for it.
class CloseButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit CloseButton(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zarvy
