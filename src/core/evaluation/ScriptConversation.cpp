#include "core/evaluation/ScriptConversation.h"

#include <cerrno>
#include <string>

#include "base/zone/LocalTime.h"
#include "base/zone/SystemLocalTime.h"

namespace zarvy {
namespace {

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
  // No known zone has a name that does not fit.
  if (zoneName.size() < sizeof(request.zoneName)) {
    zoneName.copy(request.zoneName, zoneName.size());
  }
  return request;
}

// A stretch of time, and how close to each other one must look to be sure that the clocks are not
// moved on it.
struct Stretch {
  std::int64_t length;
  std::int64_t step;
};

constexpr std::int64_t hour = 3600;
constexpr Stretch stretches[] = {{hour * 24 * 32, hour * 24}, {hour / 4, hour / 4}, {1, 1}};

std::int64_t beginOf(const Stretch& stretch, std::int64_t instant) {
  const std::int64_t rest = instant % stretch.length;
  return instant - (rest < 0 ? rest + stretch.length : rest);
}

bool isSteady(const LocalTime& time, std::int64_t begin, const Stretch& stretch) {
  const std::int32_t offset = time.offsetAt(begin);
  for (std::int64_t past = stretch.step; past <= stretch.length; past += stretch.step) {
    if (time.offsetAt(begin + past - 1) != offset) return false;
  }
  return true;
}

// What `time` says of the instant, for as long around it as is easily found out: mostly a month, so
// that a script which counts days does not ask for each. `question` is within the agreed range.
scriptwire::ClockAnswer answerTo(const scriptwire::ClockQuestion& question, const LocalTime& time) {
  scriptwire::ClockAnswer answer{question.instant, question.instant + 1,
                                 time.offsetAt(question.instant), time.savingAt(question.instant)};
  for (const Stretch& stretch : stretches) {
    const std::int64_t begin = beginOf(stretch, question.instant);
    if (!isSteady(time, begin, stretch)) continue;
    answer.from = begin;
    answer.until = begin + stretch.length;
    break;
  }
  return answer;
}

}  // namespace

int ScriptConversation::awaitReady() {
  scriptwire::Ready ready{};
  if (!receive(&ready, sizeof(ready))) {
    return m_failure == ScriptFailure::timedOut ? ETIMEDOUT : ECONNRESET;
  }
  return ready.version == scriptwire::version ? 0 : EPROTO;
}

std::variant<ScriptReply, ScriptFailure> ScriptConversation::run(const QString& expression) {
  if (!sendRequest(expression)) return m_failure;
  // A worker that never stops asking is waited for no longer than a silent one.
  while (!m_deadline.hasExpired()) {
    scriptwire::Message message{};
    if (!receive(&message, sizeof(message))) return m_failure;
    if (message == scriptwire::Message::reply) return receiveReply();
    if (message != scriptwire::Message::clockQuestion) return ScriptFailure::gone;
    if (!answerQuestion()) return m_failure;
  }
  return ScriptFailure::timedOut;
}

bool ScriptConversation::sendRequest(const QString& expression) {
  const scriptwire::Request request = requestFor(expression);
  return send(&request, sizeof(request)) &&
         send(expression.constData(), request.expressionLength * sizeof(QChar));
}

bool ScriptConversation::answerQuestion() {
  scriptwire::ClockQuestion question{};
  if (!receive(&question, sizeof(question))) return false;
  if (!isAgreed(question)) return failed(ScriptFailure::gone);
  const scriptwire::ClockAnswer answer = answerTo(question, SystemLocalTime());
  return send(&answer, sizeof(answer));
}

std::variant<ScriptReply, ScriptFailure> ScriptConversation::receiveReply() {
  scriptwire::Reply header{};
  if (!receive(&header, sizeof(header))) return m_failure;
  if (!isAgreed(header)) return ScriptFailure::gone;
  ScriptReply reply{header.outcome, {}, {}};
  QString description;
  if (!receive(reply.text, header.textLength) || !receive(description, header.descriptionLength)) {
    return m_failure;
  }
  if (header.hasThrown != 0) reply.exception = description;
  return reply;
}

bool ScriptConversation::send(const void* data, std::size_t size) {
  return isDone(sendInTime(m_socket, data, size, m_deadline));
}

bool ScriptConversation::receive(void* data, std::size_t size) {
  return isDone(receiveInTime(m_socket, data, size, m_deadline));
}

bool ScriptConversation::receive(QString& text, std::uint32_t length) {
  text = QString(static_cast<qsizetype>(length), Qt::Uninitialized);
  return receive(text.data(), length * sizeof(QChar));
}

bool ScriptConversation::isDone(TransferEnd end) {
  if (end == TransferEnd::done) return true;
  return failed(end == TransferEnd::timedOut ? ScriptFailure::timedOut : ScriptFailure::gone);
}

bool ScriptConversation::failed(ScriptFailure failure) {
  m_failure = failure;
  return false;
}

}  // namespace zarvy
