#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

namespace zarvy {

// Replaces the file at `path` by one that holds `content`, readable and writable by its owner
// alone. A reader, and the disk after a loss of power, has the old file or the new one, never part
// of either: the content goes to a temporary file in the same folder, to the disk, and then takes
// the name. Where `path` is a symbolic link, all this happens where it leads to, and the link
// stays. Returns what went wrong, as one line; absent where all went well.
[[nodiscard]] std::optional<QString> replaceFile(const QString& path, const QByteArray& content);

// Brings to the disk which files and folders `folder` holds. Returns what went wrong, as one line;
// absent where all went well.
[[nodiscard]] std::optional<QString> synchronizeFolder(const QString& folder);

// Deletes the temporary files that replaceFile(path) has left, after a process was killed between
// making one and renaming it: those that nothing was written to for an hour. A younger one may be
// of a replacement that is under way, in this process, another, or on another machine that shares
// the folder.
void removeUnfinishedReplacements(const QString& path);

}  // namespace zarvy
