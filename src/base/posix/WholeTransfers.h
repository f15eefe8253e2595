#pragma once

#include <cerrno>
#include <cstddef>
#include <sys/types.h>

namespace zarvy {

// Bytes that are moved to the last one, however many calls of the system that takes. Each waits
// without limit, but where the descriptor is one that does not block. False where not all could be
// moved; errno says why. Without Qt, for the script worker uses them too. Any thread.

[[nodiscard]] bool writeAll(int descriptor, const void* bytes, std::size_t size);

// Raises no signal where the other end of the socket is closed.
[[nodiscard]] bool sendAll(int socket, const void* bytes, std::size_t size);

// False too, without a reason, where the other end is closed ahead of the last byte.
[[nodiscard]] bool receiveAll(int socket, void* bytes, std::size_t size);

// Calls `step`, a call of the system that moves bytes, with the count of those that have been moved
// until all `size` have, whatever signals come in between. Where the call would block, `wait` says
// whether to go on. False where it does not, where the call fails, and at the end of what is read.
// What all such transfers are made of, those too that end at a deadline. Any thread.
template <typename Step, typename Wait>
[[nodiscard]] bool moveAll(std::size_t size, const Step& step, const Wait& wait) {
  std::size_t moved = 0;
  while (moved < size) {
    const ssize_t count = step(moved);
    if (count > 0) {
      moved += static_cast<std::size_t>(count);
      continue;
    }
    const bool goesOn = count < 0 && (errno == EINTR || (errno == EAGAIN && wait()));
    if (!goesOn) return false;
  }
  return true;
}

}  // namespace zarvy
