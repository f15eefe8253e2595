#pragma once

#include <QObject>
#include <QPalette>

#include "ui/style/Fonts.h"
#include "ui/style/Ink.h"

class QWidget;

namespace zarvy {

// Text apart from the desktop's usual one.
struct Tone {
  Ink ink = TextColor::primary;
  TextStyle style = {};
  QPalette::ColorRole ground = QPalette::Window;  // what it is written on
};

// Keeps a label, a check box or the like in a tone while the desktop's palette and font change.
// Belongs to the widget, which has a parent.
class ToneKeeper final : public QObject {
  Q_OBJECT

 public:
  ToneKeeper(QWidget& widget, const Tone& tone);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();

  QWidget& m_widget;
  const Tone m_tone;
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
