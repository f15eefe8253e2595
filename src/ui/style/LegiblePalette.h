#pragma once

#include <QPalette>

namespace zarvy {

// The colours of `desktop` that may not be legible in it, mended so that they are: no palette
// guarantees those of placeholders and of selections, and some desktops give none at all. Holds
// just these roles, so that all others go on following the desktop. Pure.
[[nodiscard]] QPalette legibleRoles(const QPalette& desktop);

}  // namespace zarvy
