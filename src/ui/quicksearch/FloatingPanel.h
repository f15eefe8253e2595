#pragma once

#include <memory>

#include "ui/window/Panel.h"

namespace zarvy {

// A window without a frame, above all others, which takes the keyboard. Above its content there is
// room to take hold of it, and a button to close it.
class FloatingPanel final : public Panel {
  Q_OBJECT

 public:
  // Takes `content` over. Only a translucent panel has round corners: without a compositor what is
  // left of a corner cannot be smooth.
  FloatingPanel(std::unique_ptr<QWidget> content, bool isTranslucent);

  // The user has taken hold of it, and the keyboard has not come back since: a window manager keeps
  // it to itself while it moves a window about.
  [[nodiscard]] bool isBeingMoved() const { return m_isBeingMoved; }

 protected:
  void changeEvent(QEvent* event) override;
  bool startMove() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeTopStrip();

  bool m_isBeingMoved = false;
};

}  // namespace zarvy
