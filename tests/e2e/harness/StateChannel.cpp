#include "e2e/harness/StateChannel.h"

#include <array>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>

#include <QList>

namespace zarvy::e2e {

StateChannel::StateChannel(const std::string& path)
    : m_path(path), m_listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) throw std::runtime_error("path too long: " + path);
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  ::unlink(path.c_str());
  if (::bind(m_listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
      ::listen(m_listener.get(), 1) != 0) {
    throw std::runtime_error("cannot listen at " + path);
  }
}

StateChannel::~StateChannel() {
  if (m_connection.isOpen()) ::shutdown(m_connection.get(), SHUT_RDWR);
  if (m_reader.joinable()) m_reader.join();
}

void StateChannel::accept(std::chrono::milliseconds deadline) {
  pollfd waiting{.fd = m_listener.get(), .events = POLLIN, .revents = 0};
  if (::poll(&waiting, 1, static_cast<int>(deadline.count())) == 1) {
    m_connection.reset(::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
  }
  if (!m_connection.isOpen()) throw std::runtime_error("nobody connected to " + m_path);
  m_reader = std::thread([this] { readReports(); });
  std::unique_lock lock(m_mutex);
  if (!m_changed.wait_for(lock, deadline, [this] { return m_reportCount > 0; })) {
    throw std::runtime_error("nothing was reported at " + m_path);
  }
}

EditorState StateChannel::state() const {
  const std::lock_guard lock(m_mutex);
  return m_state;
}

bool StateChannel::waitForState(const EditorState& wanted,
                                std::chrono::milliseconds deadline) const {
  std::unique_lock lock(m_mutex);
  return m_changed.wait_for(lock, deadline, [&] { return m_state == wanted; });
}

void StateChannel::clear(std::chrono::milliseconds deadline) {
  const std::string line = "clear\n";
  if (::send(m_connection.get(), line.data(), line.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(line.size())) {
    throw std::runtime_error("the program at " + m_path + " is gone");
  }
  ++m_clearsAsked;
  std::unique_lock lock(m_mutex);
  if (!m_changed.wait_for(lock, deadline, [this] { return m_clearCount == m_clearsAsked; })) {
    throw std::runtime_error("the program at " + m_path + " does not empty its text");
  }
}

void StateChannel::readReports() {
  std::string rest;
  std::array<char, 65536> bytes{};
  for (;;) {
    const ssize_t count = ::recv(m_connection.get(), bytes.data(), bytes.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    rest.append(bytes.data(), static_cast<std::size_t>(count));
    for (auto end = rest.find('\n'); end != std::string::npos; end = rest.find('\n')) {
      takeReport(rest.substr(0, end));
      rest.erase(0, end + 1);
    }
  }
}

void StateChannel::takeReport(const std::string& line) {
  const QList<QByteArray> parts = QByteArray::fromStdString(line).split(' ');
  const QByteArray digits = parts.value(2);
  EditorState state{.text = {}, .caret = parts.value(1).toLongLong()};
  for (qsizetype at = 0; at + 4 <= digits.size(); at += 4) {
    state.text += QChar(digits.mid(at, 4).toUShort(nullptr, 16));
  }
  const std::lock_guard lock(m_mutex);
  m_clearCount = parts.value(0).toInt();
  m_state = state;
  ++m_reportCount;
  m_changed.notify_all();
}

}  // namespace zarvy::e2e
