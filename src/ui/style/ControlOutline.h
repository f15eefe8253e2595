#pragma once

#include <QObject>

class QPainter;
class QWidget;

namespace zarvy {

// Draws what Qt's own style leaves out: an outline around a control that can be seen in a dark
// palette too, and a thick one in the colour of the accent while it has the keyboard, also before
// the first press of Tab. Styles that a desktop brings are left to themselves. Belongs to the
// control: a check box, a button, an input of one line or a choice.
class ControlOutline final : public QObject {
  Q_OBJECT

 public:
  explicit ControlOutline(QWidget& control);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void draw(QPainter& painter) const;
  [[nodiscard]] QRect area() const;

  QWidget& m_control;
  bool m_isPainting = false;
};

// The control itself, with its outline.
template <typename Control>
Control* outlined(Control* control) {
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the control owns it
  new ControlOutline(*control);
  return control;
}

}  // namespace zarvy
