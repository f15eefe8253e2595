#include "core/evaluation/ScriptWorker.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "base/posix/Waiting.h"

namespace zarvy {
namespace {

[[noreturn]] void fail(int error, const char* what) {
  throw std::system_error(error, std::generic_category(), what);
}

// What decides how texts, numbers and times look, and where the loader finds libraries. The rest
// may hold secrets, or settings of the engine that were made for other programs.
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

SocketPair newSockets() {
  auto sockets = makeSocketPair();
  if (!sockets) fail(errno, "socketpair");
  return std::move(*sockets);
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

}  // namespace

ScriptWorker::ScriptWorker(const QByteArrayList& arguments, SocketPair sockets, ChildReaper& reaper)
    : m_reaper(reaper),
      m_socket(std::move(sockets.own)),
      m_process(start(arguments, sockets.other.get())) {}

ScriptWorker::ScriptWorker(const QByteArrayList& arguments, std::chrono::milliseconds startLimit,
                           ChildReaper& reaper)
    : ScriptWorker(arguments, newSockets(), reaper) {
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
  const int error = ScriptConversation(m_socket.get(), deadline).awaitReady();
  if (error != 0) fail(error, "worker");
}

bool ScriptWorker::waitsForScripts() const {
  return !waitUntilReadable(m_socket.get(), QDeadlineTimer(0));
}

std::variant<ScriptReply, ScriptFailure> ScriptWorker::run(const QString& expression,
                                                           const QDeadlineTimer& deadline) const {
  return ScriptConversation(m_socket.get(), deadline).run(expression);
}

}  // namespace zarvy
