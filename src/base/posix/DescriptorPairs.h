#pragma once

#include <optional>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// Two ends that are open for this process alone: programs that it starts get neither. Absent where
// no descriptors are left; errno says why. Any thread.

// What is sent at one end is received at the other, both ways.
struct SocketPair {
  FileDescriptor own;
  FileDescriptor other;
};
[[nodiscard]] std::optional<SocketPair> makeSocketPair();

// The end for reading does not block.
struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;
};
[[nodiscard]] std::optional<Pipe> makePipe();

}  // namespace zarvy
