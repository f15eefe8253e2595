#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Copies the regular file that `from` leads to, with its blocks shared where the file system can,
// to `to`, which must not be there yet: for the user alone, and on the disk when this returns.
// Returns what went wrong, as one line, where there is no copy then. Never waits for whoever writes
// a pipe. Any thread.
[[nodiscard]] std::optional<QString> copyFile(const QString& from, const QString& to);

}  // namespace zarvy
