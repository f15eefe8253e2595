#pragma once

#include <QString>
#include <QWidget>

#include "ui/style/SystemColors.h"

namespace zarvy {

struct Snippet;

// The trigger of a snippet in a capsule of a colour; a trigger that has no room is cut short.
class TriggerBadge final : public QWidget {
  Q_OBJECT

 public:
  TriggerBadge(const Snippet& snippet, SystemColor color, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QFont textFont(QFont::Weight weight) const;
  [[nodiscard]] int prefixWidth() const;
  [[nodiscard]] QRect textArea() const;
  [[nodiscard]] QString fitting() const;

  const QString m_prefix;  // says that the trigger is an expression; empty where it is none
  const QString m_trigger;
  const QString m_shown;  // on one line
  const SystemColor m_color;
};

}  // namespace zarvy
