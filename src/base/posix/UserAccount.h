#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// The home folder of the user whom the process belongs to, by the system's list of users, whatever
// the environment says. Absent where the list has none. Any thread.
[[nodiscard]] std::optional<QString> homeInUserList();

}  // namespace zarvy
