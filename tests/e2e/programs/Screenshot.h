#pragma once

#include <QString>

#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// Saves what the whole screen shows as PNG; false where that fails.
[[nodiscard]] bool saveScreenshot(const XConnection& connection, const QString& path);

}  // namespace zarvy::e2e
