#pragma once

#include <QObject>
#include <QPalette>

#include "platform/ColorScheme.h"

namespace zarvy {

// The colours of `desktop` that may not be legible in it, mended so that they are: no palette
// guarantees those of placeholders and of selections, and some desktops give none at all. Holds
// just these roles, so that all others go on following the desktop. Pure.
[[nodiscard]] QPalette legibleRoles(const QPalette& desktop);

// Keeps the colours of the program those of the desktop while this turns light or dark, and all of
// them legible. Where the desktop has a palette of its own, Qt follows it, also while the program
// runs. Where it has none Qt takes that of its style, and does not come back to it when the desktop
// changes: then this does. Main thread, within the life of the QApplication; one at a time.
class DesktopColors final : public QObject {
  Q_OBJECT

 public:
  DesktopColors();

  // What the desktop says of itself beside its theme; unstated at first.
  void setColorScheme(ColorScheme scheme);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();
  [[nodiscard]] QPalette stylePalette() const;

  const bool m_isOfStyle;
  ColorScheme m_scheme = ColorScheme::unstated;
  bool m_isApplying = false;
};

}  // namespace zarvy
