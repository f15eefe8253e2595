#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Copies the regular file that `from` leads to, with its blocks shared where the file system can,
// to `to`, which must not be there yet: for the user alone, and on the disk when this returns. The
// folder of `to` is the user's alone. One that readFile() refuses is not copied. Returns what went
// wrong, as one line, where there is no copy then. Any thread.
[[nodiscard]] std::optional<QString> copyFile(const QString& from, const QString& to);

}  // namespace zarvy
