#pragma once

#include <cerrno>
#include <cstddef>
#include <sys/types.h>

namespace zarvy {

// Calls `step`, a call of the system that moves bytes, with the count of those that have been moved
// until all `size` have, whatever signals come in between. Where the call would block, `wait` says
// whether to go on. False where it does not, where the call fails, and at the end of what is read.
// Any thread.
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
