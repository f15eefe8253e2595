#pragma once

#include <QString>

namespace zarvy {

// Gives the application the font and the colours of a usual desktop; "light" or "dark".
void useDesktopFont();
void useDesktopColors(const QString& theme);

}  // namespace zarvy
