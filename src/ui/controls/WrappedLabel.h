#pragma once

#include <QLabel>

namespace zarvy {

// A text over as many lines as it takes, shown as it was typed and aligned to a side or centred.
// Breaks also a word that is too long for a line.
class WrappedLabel final : public QLabel {
  Q_OBJECT

 public:
  WrappedLabel(const QString& text, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zarvy
