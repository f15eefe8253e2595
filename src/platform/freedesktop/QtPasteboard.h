#pragma once

#include <QObject>
#include <QString>

#include "platform/Pasteboard.h"

namespace zarvy {

// The clipboard of the desktop, the one of Ctrl+C. What has been copied in a window of the
// program's own was kept when it was copied; all else comes from `others`, since the toolkit waits
// for an application that does not answer for as long as it likes. Within the life of the
// QGuiApplication; main thread.
class QtPasteboard final : public Pasteboard {
 public:
  // `others` outlives this object.
  explicit QtPasteboard(const Pasteboard& others);

  [[nodiscard]] QString text() const override;

 private:
  void keepOwnText();

  const Pasteboard& m_others;
  QString m_ownText;
  QObject m_listener;
};

}  // namespace zarvy
