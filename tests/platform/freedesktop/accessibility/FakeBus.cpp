#include "platform/freedesktop/accessibility/FakeBus.h"

#include <array>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

#include <QUuid>

#include "base/posix/LocalSocketAddress.h"

namespace zarvy {

FakeBus::FakeBus(Manner manner, const QString& name, bool isAbstract)
    : m_manner(manner),
      m_path(isAbstract ? name + QUuid::createUuid().toString(QUuid::WithoutBraces)
                        : m_folder.filePath(name)),
      m_listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  using Kind = LocalSocketAddress::Kind;
  const auto address =
      LocalSocketAddress::of(m_path.toUtf8(), isAbstract ? Kind::abstract : Kind::path);
  if (!address || ::bind(m_listening.get(), address->get(), address->length()) != 0) {
    throw std::runtime_error("the socket cannot be made");
  }
  if (manner == Manner::refuses) return;
  ::listen(m_listening.get(), 4);
  if (manner != Manner::isSilent) m_thread = std::thread([this] { serve(); });
}

FakeBus::~FakeBus() {
  m_ends = true;
  ::shutdown(m_listening.get(), SHUT_RDWR);
  ::shutdown(m_talking, SHUT_RDWR);
  if (m_thread.joinable()) m_thread.join();
}

void FakeBus::serve() {
  while (!m_ends) {
    const FileDescriptor connection(::accept(m_listening.get(), nullptr, nullptr));
    if (!connection.isOpen()) return;
    ++m_connectionCount;
    m_talking = connection.get();
    if (!m_ends && m_manner != Manner::closes) talk();
    m_talking = -1;
  }
}

void FakeBus::talk() {
  m_firstLine.clear();
  std::string text;
  std::array<char, 256> bytes{};
  for (;;) {
    const ssize_t size = ::recv(m_talking, bytes.data(), bytes.size(), 0);
    if (size <= 0) return;
    text.append(bytes.data(), static_cast<std::size_t>(size));
    for (auto end = text.find("\r\n"); end != std::string::npos && !m_hasBegun;
         end = text.find("\r\n")) {
      if (!reply(text.substr(0, end))) return;
      text.erase(0, end + 2);
    }
  }
}

bool FakeBus::reply(const std::string& line) {
  if (m_firstLine.empty()) m_firstLine = line;
  std::string answer = "ERROR\r\n";
  if (line.find("AUTH") != std::string::npos) answer = "OK 0123456789abcdef0123456789abcdef\r\n";
  if (m_manner == Manner::babbles) answer = std::string(4096, 'x');
  if (line == "BEGIN") m_hasBegun = true;
  if (m_hasBegun) return true;
  return ::send(m_talking, answer.data(), answer.size(), MSG_NOSIGNAL) > 0;
}

}  // namespace zarvy
