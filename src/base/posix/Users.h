#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// Whether the other end of a connected local socket belongs to a process of this user. True too
// where the system does not tell. Any thread.
[[nodiscard]] bool isOfThisUser(int connection);

// The home folder of the user whom the process belongs to, by the system's list of users, whatever
// the environment says. Absent where the list has none. Any thread.
[[nodiscard]] std::optional<QString> homeInUserList();

}  // namespace zarvy
