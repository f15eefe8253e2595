#pragma once

#include <QDialog>

class QVBoxLayout;

namespace zarvy {

class TintedButton;

// Asks for something on behalf of one window, which waits for the answer; open() shows it. Return
// presses the button that accepts, Escape cancels, and at first the keyboard is in the first
// input. As high as what is in it. Deletes itself once it has been answered.
class Sheet : public QDialog {
  Q_OBJECT

 public:
  struct Words {
    QString title;
    QString accept;  // on the button
  };

  // `width` in logical pixels.
  Sheet(const Words& words, int width, QWidget& window);

  // What is between the title and the buttons.
  [[nodiscard]] QVBoxLayout& body() { return *m_body; }

  // Whether the answer will do, so that it can be accepted; it will at first.
  void setComplete(bool isComplete);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void focusFirstInput();

  const int m_width;
  QVBoxLayout* m_body;
  TintedButton* m_accept;
};

}  // namespace zarvy
