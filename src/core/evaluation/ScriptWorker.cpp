#include "core/evaluation/ScriptWorker.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "base/zone/SystemLocalTime.h"
#include "core/evaluation/ClockAnswers.h"
#include "core/evaluation/Waiting.h"

namespace zarvy {
namespace {

[[noreturn]] void fail(int error, const char* what) {
  throw std::system_error(error, std::generic_category(), what);
}

// What decides how texts, numbers and times look, and where the loader finds libraries. The rest
// may hold what is nobody's business, or settings of the engine that somebody else has made.
QByteArrayList environmentOfWorker() {
  QByteArrayList environment;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const QByteArray text(*variable);
    const QByteArray name = text.left(text.indexOf('='));
    if (name == "LANG" || name == "TZ" || name == "LD_LIBRARY_PATH" || name.startsWith("LC_")) {
      environment += text;
    }
  }
  return environment;
}

ChildProcess start(const QByteArrayList& arguments, int socket) {
  // Not the program's own output, where the lines of the program stand. The error stream stays, for
  // the loader's complaint about a missing library.
  const FileDescriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
  if (nothing.get() < 0) fail(errno, "/dev/null");
  static_assert(scriptwire::workerSocket == 3);
  return ChildProcess(arguments, {nothing.get(), nothing.get(), ChildProcess::inherited, socket},
                      environmentOfWorker());
}

// Moves bytes while there is time. A blocked call would not come back in time, so none blocks.
class Conversation {
 public:
  Conversation(int socket, const QDeadlineTimer& deadline)
      : m_socket(socket), m_deadline(deadline) {}

  [[nodiscard]] bool send(const void* data, std::size_t size) {
    return move(POLLOUT, size, [&, rest = static_cast<const char*>(data)](std::size_t left) {
      return ::send(m_socket, rest + (size - left), left, MSG_DONTWAIT | MSG_NOSIGNAL);
    });
  }

  [[nodiscard]] bool receive(void* data, std::size_t size) {
    return move(POLLIN, size, [&, rest = static_cast<char*>(data)](std::size_t left) {
      return ::recv(m_socket, rest + (size - left), left, MSG_DONTWAIT);
    });
  }

  [[nodiscard]] bool receive(QString& text, std::uint32_t length) {
    text = QString(static_cast<qsizetype>(length), Qt::Uninitialized);
    return receive(text.data(), length * sizeof(QChar));
  }

  // Why the last of the above was false.
  [[nodiscard]] ScriptFailure failure() const { return m_failure; }

 private:
  template <typename Step>
  bool move(short event, std::size_t size, Step step) {
    while (size > 0) {
      const ssize_t moved = step(size);
      if (moved > 0) {
        size -= static_cast<std::size_t>(moved);
      } else if (moved < 0 && errno == EAGAIN) {
        if (!waitUntilReady(m_socket, event, m_deadline)) return failed(ScriptFailure::timedOut);
      } else if (moved == 0 || errno != EINTR) {
        return failed(ScriptFailure::gone);
      }
    }
    return true;
  }

  bool failed(ScriptFailure failure) {
    m_failure = failure;
    return false;
  }

  const int m_socket;
  const QDeadlineTimer& m_deadline;
  ScriptFailure m_failure = ScriptFailure::gone;
};

// The worker runs what strangers wrote: it is not believed.
bool isAgreed(const scriptwire::Reply& reply) {
  return reply.outcome <= scriptwire::Outcome::textIsTooLong && reply.hasThrown <= 1 &&
         reply.textLength <= scriptwire::longestText &&
         reply.descriptionLength <= scriptwire::longestText;
}

bool isAgreed(const scriptwire::ClockQuestion& question) {
  return question.instant >= -scriptwire::furthestInstant &&
         question.instant <= scriptwire::furthestInstant;
}

scriptwire::Request requestFor(const QString& expression) {
  scriptwire::Request request{static_cast<std::uint32_t>(expression.size()), {}};
  const std::string zoneName = SystemLocalTime::zoneName();
  // A name that does not fit is none that anybody knows.
  if (zoneName.size() < sizeof(request.zoneName)) {
    zoneName.copy(request.zoneName, zoneName.size());
  }
  return request;
}

// False where the conversation has failed.
bool answerQuestion(Conversation& conversation, const LocalTime& localTime) {
  scriptwire::ClockQuestion question{};
  if (!conversation.receive(&question, sizeof(question))) return false;
  if (!isAgreed(question)) return false;
  const scriptwire::ClockAnswer answer = answerTo(question, localTime);
  return conversation.send(&answer, sizeof(answer));
}

std::variant<ScriptReply, ScriptFailure> receiveReply(Conversation& conversation) {
  scriptwire::Reply header{};
  if (!conversation.receive(&header, sizeof(header))) return conversation.failure();
  if (!isAgreed(header)) return ScriptFailure::gone;
  ScriptReply reply{header.outcome, {}, {}};
  QString description;
  if (!conversation.receive(reply.text, header.textLength) ||
      !conversation.receive(description, header.descriptionLength)) {
    return conversation.failure();
  }
  if (header.hasThrown != 0) reply.exception = description;
  return reply;
}

}  // namespace

ScriptWorker::SocketPair::SocketPair() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    fail(errno, "socketpair");
  }
  own = FileDescriptor(ends[0]);
  workers = FileDescriptor(ends[1]);
}

ScriptWorker::ScriptWorker(const QByteArrayList& arguments, SocketPair sockets, ChildReaper& reaper)
    : m_reaper(reaper),
      m_socket(std::move(sockets.own)),
      m_process(start(arguments, sockets.workers.get())) {}

ScriptWorker::ScriptWorker(const QByteArrayList& arguments, std::chrono::milliseconds startLimit,
                           ChildReaper& reaper)
    : ScriptWorker(arguments, SocketPair(), reaper) {
  // From here on the destructor ends the process.
  waitUntilItTakesScripts(QDeadlineTimer(startLimit));
}

ScriptWorker::~ScriptWorker() {
  m_process.signalGroup(SIGKILL);
  // Some milliseconds, unless the kernel is in trouble.
  const bool ended = m_process.waitForEnd(QDeadlineTimer(std::chrono::milliseconds(200)));
  if (!ended || !m_process.reap()) m_reaper.adopt(std::move(m_process));
}

void ScriptWorker::waitUntilItTakesScripts(const QDeadlineTimer& deadline) const {
  Conversation conversation(m_socket.get(), deadline);
  scriptwire::Ready ready{};
  if (!conversation.receive(&ready, sizeof(ready))) {
    fail(conversation.failure() == ScriptFailure::timedOut ? ETIMEDOUT : ECONNRESET, "worker");
  }
  if (ready.version != scriptwire::version) fail(EPROTO, "worker");
}

bool ScriptWorker::waitsForScripts() const {
  return !waitUntilReady(m_socket.get(), POLLIN | POLLRDHUP, QDeadlineTimer(0));
}

std::variant<ScriptReply, ScriptFailure> ScriptWorker::run(const QString& expression,
                                                           const QDeadlineTimer& deadline) const {
  Conversation conversation(m_socket.get(), deadline);
  const SystemLocalTime localTime;
  const scriptwire::Request request = requestFor(expression);
  if (!conversation.send(&request, sizeof(request)) ||
      !conversation.send(expression.constData(), request.expressionLength * sizeof(QChar))) {
    return conversation.failure();
  }
  // A worker that never stops asking is waited for no longer than a silent one.
  while (!deadline.hasExpired()) {
    scriptwire::Message message{};
    if (!conversation.receive(&message, sizeof(message))) return conversation.failure();
    if (message == scriptwire::Message::reply) return receiveReply(conversation);
    if (message != scriptwire::Message::clockQuestion) return ScriptFailure::gone;
    if (!answerQuestion(conversation, localTime)) return conversation.failure();
  }
  return ScriptFailure::timedOut;
}

}  // namespace zarvy
