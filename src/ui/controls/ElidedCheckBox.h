#pragma once

#include <QCheckBox>

namespace zarvy {

// A check box whose title is shown as it was typed, and cut short where it has no room.
class ElidedCheckBox final : public QCheckBox {
  Q_OBJECT

 public:
  ElidedCheckBox(const QString& title, QWidget* parent);

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] int besidesText() const;
  [[nodiscard]] QString fitting() const;
  void fit();

  const QString m_title;
  const QString m_shown;  // on one line
};

}  // namespace zarvy
