#pragma once

namespace zarvy {

// Whether the other end of a connected local socket belongs to a process of this user. True too
// where the system does not tell. Any thread.
[[nodiscard]] bool isOfThisUser(int connection);

}  // namespace zarvy
