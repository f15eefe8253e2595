#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Makes the folder `path` for the user alone, and with the usual rights the folders above it that
// are missing. Returns what went wrong, as one line; absent where all went well, or where something
// of that name was there already.
[[nodiscard]] std::optional<QString> makePrivateFolder(const QString& path);

}  // namespace zarvy
