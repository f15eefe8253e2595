#pragma once

#include <QString>

namespace zarvy {

// Opens a scene on the display of this process and saves what the screen shows of its window, the
// window manager's frame included. The window opens light and is turned dark under the user's eyes
// where `theme` says so. False where there is no such scene, or where it did not come up.
[[nodiscard]] bool photograph(const QString& scene, const QString& theme, const QString& path);

}  // namespace zarvy
