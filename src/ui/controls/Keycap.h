#pragma once

#include <optional>

#include <QString>
#include <QWidget>

#include "ui/symbols/Symbol.h"

namespace zarvy {

// A key of the keyboard, for a hint at what it does: its symbol, or else its name, on a small
// rounded background.
class Keycap final : public QWidget {
  Q_OBJECT

 public:
  explicit Keycap(const QString& name, std::optional<Symbol> symbol, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QFont keyFont() const;

  const QString m_name;
  const std::optional<Symbol> m_symbol;
};

}  // namespace zarvy
