#include "base/posix/LocalSocketAddress.h"

#include <cstddef>
#include <cstring>

namespace zarvy {

// An abstract name begins with a zero byte, and does not end with one.
std::optional<LocalSocketAddress> LocalSocketAddress::of(const QByteArray& name, Kind kind) {
  LocalSocketAddress result;
  result.m_address.sun_family = AF_UNIX;
  const std::size_t start = kind == Kind::abstract ? 1 : 0;
  const auto size = static_cast<std::size_t>(name.size());
  if (name.isEmpty() || start + size >= sizeof result.m_address.sun_path) return std::nullopt;
  std::memcpy(result.m_address.sun_path + start, name.constData(), size);
  const std::size_t end = kind == Kind::abstract ? start + size : start + size + 1;
  result.m_length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + end);
  return result;
}

FileDescriptor connectTo(const LocalSocketAddress& address) {
  FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (::connect(socket.get(), address.get(), address.length()) != 0) return FileDescriptor();
  return socket;
}

}  // namespace zarvy
