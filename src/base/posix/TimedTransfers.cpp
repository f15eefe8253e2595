#include "base/posix/TimedTransfers.h"

#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>

#include "base/posix/Waiting.h"
#include "base/posix/WholeTransfers.h"

namespace zarvy {

namespace {

template <typename Step, typename Wait>
TransferEnd moveInTime(std::size_t size, const Step& step, const Wait& wait) {
  bool hasTime = true;
  const bool isDone = moveAll(size, step, [&] {
    hasTime = wait();
    return hasTime;
  });
  if (isDone) return TransferEnd::done;
  return hasTime ? TransferEnd::broken : TransferEnd::timedOut;
}

}  // namespace

TransferEnd sendInTime(int socket, const void* bytes, std::size_t size,
                       const QDeadlineTimer& deadline) {
  const auto* const start = static_cast<const char*>(bytes);
  return moveInTime(
      size,
      [&](std::size_t moved) {
        return ::send(socket, start + moved, size - moved, MSG_DONTWAIT | MSG_NOSIGNAL);
      },
      [&] { return waitUntilWritable(socket, deadline); });
}

TransferEnd receiveInTime(int socket, void* bytes, std::size_t size,
                          const QDeadlineTimer& deadline) {
  auto* const start = static_cast<char*>(bytes);
  return moveInTime(
      size,
      [&](std::size_t moved) { return ::recv(socket, start + moved, size - moved, MSG_DONTWAIT); },
      [&] { return waitUntilReadable(socket, deadline); });
}

std::optional<QByteArray> readToEnd(int descriptor, qsizetype most,
                                    const QDeadlineTimer& deadline) {
  QByteArray bytes;
  std::array<char, 65'536> part{};
  while (bytes.size() <= most && waitUntilReadable(descriptor, deadline)) {
    const ssize_t count = ::read(descriptor, part.data(), part.size());
    if (count == 0) return bytes;
    if (count > 0) bytes.append(part.data(), count);
    if (count < 0 && errno != EAGAIN && errno != EINTR) break;
  }
  return std::nullopt;
}

}  // namespace zarvy
