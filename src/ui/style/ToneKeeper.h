#pragma once

#include <QObject>
#include <QPalette>
#include <QPointer>
#include <QWidget>

#include "ui/style/Fonts.h"
#include "ui/style/Ink.h"

namespace zarvy {

// Text apart from the desktop's usual one.
struct Tone {
  Ink ink = TextColor::primary;
  TextStyle style = {};
  QPalette::ColorRole ground = QPalette::Window;  // what it is written on
};

// Keeps a label, a check box or the like in a tone while the desktop's palette and font change, and
// wherever it moves. While it is disabled it looks as the desktop has it. Belongs to the widget.
class ToneKeeper final : public QObject {
  Q_OBJECT

 public:
  ToneKeeper(QWidget& widget, const Tone& tone);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void followParent();
  void apply();

  QWidget& m_widget;
  const Tone m_tone;
  QPointer<QWidget> m_parent;  // null of a window
  bool m_isApplying = false;
};

// The widget itself, kept in `tone`.
template <typename Widget>
Widget* inTone(Widget* widget, const Tone& tone) {
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the widget owns it
  new ToneKeeper(*widget, tone);
  return widget;
}

}  // namespace zarvy
