#pragma once

#include <memory>

#include <QString>

#include "ui/window/Panel.h"

namespace zarvy {

// The window around a form, above all others.
class FillInPanel final : public Panel {
  Q_OBJECT

 public:
  // Takes `content` over.
  FillInPanel(std::unique_ptr<QWidget> content, const QString& title);
};

}  // namespace zarvy
