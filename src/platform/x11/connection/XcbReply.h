#pragma once

#include <cstdlib>
#include <memory>

namespace zarvy::x11 {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }
};

// What libxcb allocates with malloc: replies, errors, events. Null where a request failed.
template <typename T>
using XcbPtr = std::unique_ptr<T, FreeDeleter>;

}  // namespace zarvy::x11
