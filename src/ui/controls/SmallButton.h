#pragma once

#include <QPushButton>

#include "ui/style/ControlOutline.h"
#include "ui/style/ToneKeeper.h"

namespace zarvy {

// A button that belongs to a row of a form.
[[nodiscard]] inline QPushButton* smallButton(const QString& text, QWidget* parent) {
  return outlined(inTone(new QPushButton(text, parent), {TextColor::primary, lettering::caption}));
}

}  // namespace zarvy
