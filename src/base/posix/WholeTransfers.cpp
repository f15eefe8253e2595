#include "base/posix/WholeTransfers.h"

#include <sys/socket.h>
#include <unistd.h>

namespace zarvy {

namespace {

constexpr auto doNotWait = [] { return false; };

}  // namespace

bool writeAll(int descriptor, const void* bytes, std::size_t size) {
  const auto* const start = static_cast<const char*>(bytes);
  return moveAll(
      size, [&](std::size_t moved) { return ::write(descriptor, start + moved, size - moved); },
      doNotWait);
}

bool sendAll(int socket, const void* bytes, std::size_t size) {
  const auto* const start = static_cast<const char*>(bytes);
  return moveAll(
      size,
      [&](std::size_t moved) { return ::send(socket, start + moved, size - moved, MSG_NOSIGNAL); },
      doNotWait);
}

bool receiveAll(int socket, void* bytes, std::size_t size) {
  auto* const start = static_cast<char*>(bytes);
  return moveAll(
      size,
      [&](std::size_t moved) { return ::recv(socket, start + moved, size - moved, MSG_WAITALL); },
      doNotWait);
}

}  // namespace zarvy
