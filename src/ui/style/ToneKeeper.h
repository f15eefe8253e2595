#pragma once

#include <QFont>
#include <QObject>
#include <QPalette>

class QWidget;

namespace zarvy {

// Text apart from the desktop's usual one.
struct Tone {
  enum class Color { primary, secondary, tertiary, required, granted };

  Color color = Color::primary;
  double scale = 1;  // in relation to the desktop's usual text
  QFont::Weight weight = QFont::Normal;
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
