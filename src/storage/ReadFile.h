#pragma once

#include <QByteArray>
#include <QString>

#include "base/json/JsonResult.h"

namespace zarvy {

// More than any document holds. A larger one would fill the memory.
inline constexpr qint64 largestFile = qint64{256} * 1024 * 1024;

// The content of the regular file that `path` leads to, `largest` bytes at most: by what is read,
// for a file may say that it is empty and never end. Waits for no writer of a pipe, also where one
// takes the place of a file while this looks. Any thread.
[[nodiscard]] JsonResult<QByteArray> readFile(const QString& path, qint64 largest = largestFile);

}  // namespace zarvy
