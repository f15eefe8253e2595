#pragma once

#include <memory>

#include <QWidget>

#include "ui/WindowDelegate.h"

namespace zarvy {

// A window without a frame, above all others, which takes the keyboard and is moved by any part of
// it that is no control. Above its content there is room to take hold of it, and a button to close
// it.
class FloatingPanel final : public QWidget {
  Q_OBJECT

 public:
  // Takes `content` over. Only a translucent panel has round corners: without a compositor what is
  // left of a corner cannot be smooth.
  FloatingPanel(std::unique_ptr<QWidget> content, bool isTranslucent);

  // Told of the closing; not kept alive.
  void setDelegate(std::weak_ptr<const WindowDelegate> delegate);

  // Moves to the middle of the screen that the pointer is on, and fits into it.
  void center();

  // The user has taken hold of it, and the keyboard has not come back since: a window manager keeps
  // it to itself while it moves a window about.
  [[nodiscard]] bool isBeingMoved() const { return m_isBeingMoved; }

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeTopStrip();

  std::weak_ptr<const WindowDelegate> m_delegate;
  bool m_isBeingMoved = false;
};

}  // namespace zarvy
