#include "e2e/harness/DebuggingPipe.h"

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>

#include <QJsonDocument>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int answerDeadline = 30000;  // milliseconds

void openPipe(FileDescriptor& reading, FileDescriptor& writing) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe for the browser");
  reading.reset(ends[0]);
  writing.reset(ends[1]);
}

}  // namespace

DebuggingPipe::DebuggingPipe() {
  openPipe(m_commandsForChild, m_commands);
  openPipe(m_answers, m_answersFromChild);
}

std::vector<ProcessSpecification::Descriptor> DebuggingPipe::childDescriptors() const {
  return {{.ours = m_commandsForChild.get(), .theirs = 3},
          {.ours = m_answersFromChild.get(), .theirs = 4}};
}

void DebuggingPipe::closeChildEnds() {
  m_commandsForChild.reset();
  m_answersFromChild.reset();
}

QJsonObject DebuggingPipe::call(const QString& method, const QJsonObject& parameters,
                                const QString& session) {
  const int id = ++m_lastId;
  QJsonObject command{{u"id"_s, id}, {u"method"_s, method}, {u"params"_s, parameters}};
  if (!session.isEmpty()) command[u"sessionId"_s] = session;
  send(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\0');
  for (;;) {
    // Events come along the same way; nobody here asks for any.
    const QJsonObject answer = QJsonDocument::fromJson(receive()).object();
    if (answer[u"id"_s].toInt() != id) continue;
    if (answer.contains(u"error"_s)) {
      throw std::runtime_error("the browser refuses " + method.toStdString());
    }
    return answer[u"result"_s].toObject();
  }
}

void DebuggingPipe::send(const QByteArray& message) {
  if (::write(m_commands.get(), message.constData(), static_cast<std::size_t>(message.size())) !=
      message.size()) {
    throw std::runtime_error("the browser takes no commands");
  }
}

QByteArray DebuggingPipe::receive() {
  for (qsizetype end = m_received.indexOf('\0'); end < 0; end = m_received.indexOf('\0')) {
    pollfd waiting{.fd = m_answers.get(), .events = POLLIN, .revents = 0};
    if (::poll(&waiting, 1, answerDeadline) != 1) throw std::runtime_error("the browser is mute");
    std::array<char, 65536> bytes{};
    const ssize_t count = ::read(m_answers.get(), bytes.data(), bytes.size());
    if (count <= 0) throw std::runtime_error("the browser is gone");
    m_received.append(bytes.data(), count);
  }
  const qsizetype end = m_received.indexOf('\0');
  const QByteArray message = m_received.left(end);
  m_received.remove(0, end + 1);
  return message;
}

}  // namespace zarvy::e2e
