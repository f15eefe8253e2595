#pragma once

#include <memory>

#include <QString>

#include "ui/window/Panel.h"

namespace zarvy {

// The window around a form: above all others, and moved by any part of it that is no control.
class FillInPanel final : public Panel {
  Q_OBJECT

 public:
  // Takes `content` over.
  FillInPanel(std::unique_ptr<QWidget> content, const QString& title);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace zarvy
