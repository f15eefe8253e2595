#pragma once

#include "platform/Pasteboard.h"

namespace zarvy {

// The clipboard of the desktop, the one of Ctrl+C. What has been copied in a window of the
// program's own comes from the toolkit, at once; all else from `others`, since the toolkit waits
// for an application that does not answer for as long as it likes. Within the life of the
// QGuiApplication.
class QtPasteboard final : public Pasteboard {
 public:
  // `others` outlives this object.
  explicit QtPasteboard(const Pasteboard& others) : m_others(others) {}

  [[nodiscard]] QString text() const override;

 private:
  const Pasteboard& m_others;
};

}  // namespace zarvy
