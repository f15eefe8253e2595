#pragma once

#include <cstddef>

namespace zarvy {

// Bytes that are moved to the last one, however many calls of the system that takes. Each waits
// without limit, but where the descriptor is one that does not block. False where not all could be
// moved; errno says why. Without Qt, for the script worker uses them too. Any thread.

[[nodiscard]] bool writeAll(int descriptor, const void* bytes, std::size_t size);

// Raises no signal where the other end of the socket is closed.
[[nodiscard]] bool sendAll(int socket, const void* bytes, std::size_t size);

// False too, without a reason, where the other end is closed ahead of the last byte.
[[nodiscard]] bool receiveAll(int socket, void* bytes, std::size_t size);

}  // namespace zarvy
