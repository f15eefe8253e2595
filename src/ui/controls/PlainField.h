#pragma once

#include <QLineEdit>

#include "ui/style/Fonts.h"

namespace zarvy {

// An input of one line without a frame, written on the window itself. Stays in the parent that it
// is made with.
class PlainField final : public QLineEdit {
  Q_OBJECT

 public:
  PlainField(const TextStyle& style, QWidget* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void followSurroundings();

  const TextStyle m_style;
};

}  // namespace zarvy
