#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace zarvy {

struct Snippet;

// The trigger of a snippet in a capsule of a colour; a trigger that has no room is cut short.
class TriggerBadge final : public QWidget {
  Q_OBJECT

 public:
  TriggerBadge(const Snippet& snippet, const QColor& color, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QFont textFont(QFont::Weight weight) const;
  [[nodiscard]] int prefixWidth() const;

  const QString m_prefix;  // says that the trigger is an expression; empty where it is none
  const QString m_trigger;
  const QColor m_color;
};

}  // namespace zarvy
