#include "platform/freedesktop/accessibility/DBusProbe.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QStringList>

#include "base/posix/FileDescriptor.h"
#include "base/posix/Waiting.h"
#include "base/posix/WholeTransfers.h"

namespace zarvy {

namespace {

// More than a first line is long, of a bus that means it.
constexpr qsizetype longestLine = 1024;

struct SocketName {
  sockaddr_un address{};
  socklen_t length = 0;
};

// An abstract name begins with a zero byte, and does not end with one.
std::optional<SocketName> socketNamed(const QByteArray& name, bool isAbstract) {
  SocketName result;
  result.address.sun_family = AF_UNIX;
  const std::size_t start = isAbstract ? 1 : 0;
  const auto size = static_cast<std::size_t>(name.size());
  if (name.isEmpty() || start + size >= sizeof result.address.sun_path) return std::nullopt;
  std::memcpy(result.address.sun_path + start, name.constData(), size);
  const std::size_t end = isAbstract ? start + size : start + size + 1;
  result.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + end);
  return result;
}

// Of one part: "unix:" and then keys and values, whose odd characters are written "%xx".
std::optional<SocketName> socketOf(const QByteArray& part) {
  const QByteArray transport = "unix:";
  if (!part.startsWith(transport)) return std::nullopt;
  for (const QByteArray& pair : part.mid(transport.size()).split(',')) {
    const qsizetype sign = pair.indexOf('=');
    const QByteArray key = pair.first(std::max<qsizetype>(sign, 0));
    if (key != "path" && key != "abstract") continue;
    return socketNamed(QByteArray::fromPercentEncoding(pair.mid(sign + 1)), key == "abstract");
  }
  return std::nullopt;
}

// What every connection to a bus begins with: who is asking.
QByteArray greeting() {
  const QByteArray user = QByteArray::number(::getuid()).toHex();
  return QByteArray(1, '\0') + "AUTH EXTERNAL " + user + "\r\n";
}

FileDescriptor connectTo(const SocketName& name) {
  FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const auto* address = reinterpret_cast<const sockaddr*>(&name.address);
  if (::connect(socket.get(), address, name.length) != 0) return FileDescriptor();
  return socket;
}

bool send(const FileDescriptor& socket, const QByteArray& text) {
  return sendAll(socket.get(), text.constData(), static_cast<std::size_t>(text.size()));
}

// Empty where none comes in time.
QByteArray receiveLine(const FileDescriptor& socket, const QDeadlineTimer& deadline) {
  QByteArray text;
  while (!text.contains('\n') && text.size() < longestLine) {
    if (!waitUntilReadable(socket.get(), deadline)) return {};
    std::array<char, 256> bytes{};
    const ssize_t size = ::recv(socket.get(), bytes.data(), bytes.size(), 0);
    if (size <= 0) return {};
    text.append(bytes.data(), size);
  }
  return text;
}

bool answers(const SocketName& name, std::chrono::milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  const FileDescriptor socket = connectTo(name);
  return socket.isOpen() && send(socket, greeting()) &&
         receiveLine(socket, deadline).startsWith("OK");
}

}  // namespace

std::optional<QString> partThatAnswers(const QString& address, std::chrono::milliseconds limit) {
  for (const QString& part : address.split(u';', Qt::SkipEmptyParts)) {
    const auto name = socketOf(part.toUtf8());
    if (name && answers(*name, limit)) return part;
  }
  return std::nullopt;
}

}  // namespace zarvy
