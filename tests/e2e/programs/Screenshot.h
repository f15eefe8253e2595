#pragma once

#include <QImage>
#include <QString>

#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// What the whole screen shows; null where the server does not tell.
[[nodiscard]] QImage screenImage(const XConnection& connection);

// Saves it as PNG; false where that fails.
[[nodiscard]] bool savePicture(const QImage& image, const QString& path);

}  // namespace zarvy::e2e
