#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Makes the folder `path` for the user alone, and with the usual rights the folders above it that
// are missing. Returns what went wrong, as one line; absent where all went well, or where something
// of that name was there already.
[[nodiscard]] std::optional<QString> makePrivateFolder(const QString& path);

// Whether the file or folder that `path` leads to is neither this user's nor the administrator's:
// its owner can then put into it what they like. False if it is missing.
[[nodiscard]] bool belongsToAnother(const QString& path);

// Leaves to the user alone what rights there are to the file or folder `path`. Nothing happens
// where it is a link, another user's, or not there.
void takeRightsFromOthers(const QString& path);

}  // namespace zarvy
