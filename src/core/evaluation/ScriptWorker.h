#pragma once

#include <chrono>
#include <variant>

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QString>

#include "base/posix/ChildReaper.h"
#include "base/posix/FileDescriptor.h"
#include "core/evaluation/ScriptConversation.h"

namespace zarvy {

// The process that runs scripts, seen from this side. One thread at a time. It is killed at the
// end, whatever it does. It must be ended after a failure, as it may still answer the failed
// request.
class ScriptWorker {
 public:
  // Starts the program whose path is the first of `arguments`, and waits until it takes scripts.
  // Throws std::system_error with the reason where it does not within `startLimit`.
  ScriptWorker(const QByteArrayList& arguments, std::chrono::milliseconds startLimit,
               ChildReaper& reaper);
  ~ScriptWorker();

  ScriptWorker(const ScriptWorker&) = delete;
  ScriptWorker& operator=(const ScriptWorker&) = delete;

  [[nodiscard]] pid_t id() const { return m_process.id(); }

  // False once it has ended by itself.
  [[nodiscard]] bool waitsForScripts() const;

  // `expression` is at most scriptwire::longestText long.
  [[nodiscard]] std::variant<ScriptReply, ScriptFailure> run(const QString& expression,
                                                             const QDeadlineTimer& deadline) const;

 private:
  ScriptWorker(const QByteArrayList& arguments, SocketPair sockets, ChildReaper& reaper);

  void waitUntilItTakesScripts(const QDeadlineTimer& deadline) const;

  ChildReaper& m_reaper;
  FileDescriptor m_socket;
  ChildProcess m_process;
};

}  // namespace zarvy
