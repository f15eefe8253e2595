#pragma once

#include <QLabel>

namespace zarvy {

// A text on one line, shown as it was typed and cut short where it has no room.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  ElidedLabel(const QString& text, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString m_shown;
};

}  // namespace zarvy
