#pragma once

#include <cstddef>
#include <optional>
#include <variant>

#include <QDeadlineTimer>
#include <QString>

#include "base/posix/TimedTransfers.h"
#include "jsworker/wire/ScriptWire.h"

namespace zarvy {

struct ScriptReply {
  scriptwire::Outcome outcome = scriptwire::Outcome::nothing;
  QString text;                      // for the outcome that has one
  std::optional<QString> exception;  // the description of what was thrown; may be empty
};

enum class ScriptFailure {
  timedOut,
  gone,  // the worker has ended, or has said what is not agreed
};

// What is said with a script worker over its socket. The worker runs what strangers wrote: nothing
// that it says is trusted. Every call returns by the deadline, whatever the worker does. One
// thread.
class ScriptConversation {
 public:
  // Both must outlive this object.
  ScriptConversation(int socket, const QDeadlineTimer& deadline)
      : m_socket(socket), m_deadline(deadline) {}

  // Waits until the worker takes scripts. 0, or the system's number for what is wrong.
  [[nodiscard]] int awaitReady();

  // Sends `expression`, at most scriptwire::longestText long, and answers what the worker asks on
  // the way. After a failure the worker must be ended: it may still answer the failed request.
  [[nodiscard]] std::variant<ScriptReply, ScriptFailure> run(const QString& expression);

 private:
  [[nodiscard]] bool sendRequest(const QString& expression);
  [[nodiscard]] bool answerQuestion();
  [[nodiscard]] std::variant<ScriptReply, ScriptFailure> receiveReply();

  [[nodiscard]] bool send(const void* data, std::size_t size);
  [[nodiscard]] bool receive(void* data, std::size_t size);
  [[nodiscard]] bool receive(QString& text, std::uint32_t length);
  [[nodiscard]] bool isDone(TransferEnd end);
  [[nodiscard]] bool failed(ScriptFailure failure);

  const int m_socket;
  const QDeadlineTimer& m_deadline;
  ScriptFailure m_failure = ScriptFailure::gone;  // why the last of the above was false
};

}  // namespace zarvy
