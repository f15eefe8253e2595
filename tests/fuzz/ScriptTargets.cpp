#include <array>
#include <sys/socket.h>

#include "base/posix/FileDescriptor.h"
#include "core/evaluation/ScriptConversation.h"
#include "fuzz/ByteSource.h"
#include "fuzz/ProtocolTargets.h"

namespace zarvy::fuzz {
namespace {

using namespace Qt::Literals::StringLiterals;

using Answer = std::variant<ScriptReply, ScriptFailure>;

const auto expression = u"1 + 1"_s;

// Both ends of the socket; a worker that has said all ahead of the question, and ends.
class SaidAhead {
 public:
  SaidAhead() {
    std::array<int, 2> ends{};
    require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0, "no socket");
    m_own = FileDescriptor(ends[0]);
    m_workers = FileDescriptor(ends[1]);
  }

  void say(const void* data, std::size_t size) {
    const ssize_t sent = ::send(m_workers.get(), data, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    require(sent == static_cast<ssize_t>(size), "the socket takes too little");
  }

  template <typename Header>
  void say(const Header& header) {
    say(&header, sizeof(header));
  }

  void say(const QString& text) {
    say(text.constData(), static_cast<std::size_t>(text.size()) * sizeof(QChar));
  }

  // What comes of it; a minute is never over.
  [[nodiscard]] Answer answer() {
    ::shutdown(m_workers.get(), SHUT_WR);
    const QDeadlineTimer deadline(std::chrono::minutes(1));
    Answer result = ScriptConversation(m_own.get(), deadline).run(expression);
    require(!deadline.hasExpired(), "the program waits for a worker that has ended");
    return result;
  }

  // The request, and then a clock answer for each question.
  [[nodiscard]] std::size_t heard() {
    std::array<char, 8192> heard{};
    const ssize_t size = ::recv(m_workers.get(), heard.data(), heard.size(), MSG_DONTWAIT);
    return size < 0 ? 0 : static_cast<std::size_t>(size);
  }

 private:
  FileDescriptor m_own;
  FileDescriptor m_workers;
};

void requireAgreed(const ScriptReply& reply, std::size_t sent) {
  require(reply.outcome <= scriptwire::Outcome::textIsTooLong, "an outcome that there is not");
  const qsizetype units = reply.text.size() + reply.exception.value_or(QString()).size();
  require(static_cast<std::size_t>(units) * sizeof(QChar) + sizeof(scriptwire::Reply) <= sent,
          "more text than was sent");
}

std::size_t requestSize() {
  return sizeof(scriptwire::Request) + static_cast<std::size_t>(expression.size()) * sizeof(QChar);
}

}  // namespace

void scriptWire(Bytes bytes) {
  SaidAhead worker;
  worker.say(bytes.data(), bytes.size());
  const Answer answer = worker.answer();
  require(worker.heard() >= requestSize(), "the request was not sent");
  if (const auto* const reply = std::get_if<ScriptReply>(&answer)) {
    requireAgreed(*reply, bytes.size());
  } else {
    require(std::get<ScriptFailure>(answer) == ScriptFailure::gone, "time is up too soon");
  }
}

void scriptReply(Bytes bytes) {
  ByteSource source(bytes);
  const std::size_t questions = source.below(8);
  const auto outcome = static_cast<scriptwire::Outcome>(source.below(4));
  const std::uint32_t hasThrown = source.number() % 2;
  const QStringList texts = textsOf(source.takeRest());
  const QString text = texts.at(0);
  const QString thrown = texts.value(1);

  SaidAhead worker;
  for (std::size_t question = 0; question < questions; ++question) {
    worker.say(scriptwire::Message::clockQuestion);
    worker.say(scriptwire::ClockQuestion{static_cast<std::int64_t>(question) * 1'000'000'000});
  }
  worker.say(scriptwire::Message::reply);
  worker.say(scriptwire::Reply{outcome, hasThrown, static_cast<std::uint32_t>(text.size()),
                               static_cast<std::uint32_t>(thrown.size())});
  worker.say(text);
  worker.say(thrown);

  const Answer answer = worker.answer();
  const auto* const reply = std::get_if<ScriptReply>(&answer);
  require(reply != nullptr, "a reply is refused");
  require(reply->outcome == outcome && reply->text == text, "another reply comes across");
  require(reply->exception == (hasThrown ? std::optional(thrown) : std::nullopt),
          "another exception comes across");
  require(worker.heard() == requestSize() + questions * sizeof(scriptwire::ClockAnswer),
          "a question is not answered");
}

}  // namespace zarvy::fuzz
