#pragma once

#include <QLabel>

namespace zarvy {

// A text on one line, shown as it was typed and cut short where it has no room. May have a buddy:
// no character of it is a mark of a shortcut.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  ElidedLabel(const QString& text, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QString fitting() const;

  const QString m_text;
  const QString m_shown;  // on one line
};

}  // namespace zarvy
