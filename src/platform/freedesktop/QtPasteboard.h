#pragma once

#include "platform/Pasteboard.h"

namespace zarvy {

// The clipboard of the desktop, the one of Ctrl+C. Within the life of the QGuiApplication; while
// the application that owns the clipboard answers slowly, so does this.
class QtPasteboard final : public Pasteboard {
 public:
  [[nodiscard]] QString text() const override;
};

}  // namespace zarvy
