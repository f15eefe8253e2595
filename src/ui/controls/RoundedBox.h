#pragma once

#include <QPalette>
#include <QWidget>

namespace zarvy {

// A box with rounded corners around one widget, with a line that takes the accent colour while the
// widget has the keyboard.
class RoundedBox final : public QWidget {
  Q_OBJECT

 public:
  // Keeps scroll bars off the rounded corners.
  static constexpr int scrollBarPadding = 1;

  struct Look {
    QPalette::ColorRole background = QPalette::Base;
    int padding = 0;       // inside the line, in logical pixels as everywhere
    bool isInput = false;  // whose outline is to be found also without the keyboard
  };

  // Takes `content` over.
  RoundedBox(QWidget& content, const Look& look, QWidget* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QWidget& m_content;
  const Look m_look;
};

}  // namespace zarvy
