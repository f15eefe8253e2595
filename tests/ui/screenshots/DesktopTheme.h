#pragma once

#include <QPalette>
#include <QString>

namespace zarvy {

// The colours of a usual desktop; `theme` is "light" or "dark".
[[nodiscard]] QPalette desktopPalette(const QString& theme);

// Gives the application the font and the colours of a usual desktop.
void useDesktopFont();
void useDesktopColors(const QString& theme);

}  // namespace zarvy
