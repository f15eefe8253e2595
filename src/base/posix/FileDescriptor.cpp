#include "base/posix/FileDescriptor.h"

#include <array>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zarvy {

std::optional<SocketPair> makeSocketPair() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return std::nullopt;
  return SocketPair{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

std::optional<Pipe> makePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
  if (::fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0) return std::nullopt;
  return pipe;
}

}  // namespace zarvy
