#pragma once

#include <QPushButton>

namespace zarvy {

// The button of what is most likely wanted, in the accent colour of the desktop.
class ProminentButton final : public QPushButton {
  Q_OBJECT

 public:
  ProminentButton(const QString& text, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void takeColors();

  bool m_isTakingColors = false;
};

}  // namespace zarvy
