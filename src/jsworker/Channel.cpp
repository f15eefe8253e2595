#include "jsworker/Channel.h"

#include <cstdlib>
#include <poll.h>
#include <unistd.h>
#include <utility>

#include "base/posix/WholeTransfers.h"

namespace zarvy {

using scriptwire::longestText;
using scriptwire::Message;
using scriptwire::Outcome;

namespace {

constexpr Message clockQuestion = Message::clockQuestion;
constexpr Message lastMessage = Message::reply;

}  // namespace

void Channel::sendReady() const {
  const scriptwire::Ready ready{scriptwire::version};
  send(&ready, sizeof(ready));
}

bool Channel::isAsked() const {
  pollfd request{m_socket, POLLIN, 0};
  return poll(&request, 1, 0) > 0;
}

ScriptRequest Channel::receiveRequest() const {
  scriptwire::Request request{};
  receive(&request, sizeof(request));
  if (request.expressionLength > longestText) _exit(EXIT_FAILURE);
  std::u16string expression(request.expressionLength, u'\0');
  receive(expression.data(), expression.size() * sizeof(char16_t));
  return {std::move(expression), std::string(request.zoneName)};
}

scriptwire::ClockAnswer Channel::ask(const scriptwire::ClockQuestion& question) const {
  send(&clockQuestion, sizeof(clockQuestion));
  send(&question, sizeof(question));
  scriptwire::ClockAnswer answer{};
  receive(&answer, sizeof(answer));
  return answer;
}

void Channel::sendResult(const ScriptResult& result) const {
  std::u16string_view text = unitsOf(result.text);
  Outcome outcome = result.outcome;
  if (text.size() > longestText) {
    text = {};
    outcome = Outcome::textIsTooLong;
  }
  const std::u16string_view description = unitsOf(result.description).substr(0, longestText);
  const scriptwire::Reply reply{outcome, result.hasThrown ? 1U : 0U,
                                static_cast<std::uint32_t>(text.size()),
                                static_cast<std::uint32_t>(description.size())};
  send(&lastMessage, sizeof(lastMessage));
  send(&reply, sizeof(reply));
  sendText(text);
  sendText(description);
}

void Channel::sendText(std::u16string_view text) const {
  send(text.data(), text.size() * sizeof(char16_t));
}

void Channel::send(const void* data, std::size_t size) const {
  if (!sendAll(m_socket, data, size)) _exit(EXIT_SUCCESS);
}

void Channel::receive(void* data, std::size_t size) const {
  if (!receiveAll(m_socket, data, size)) _exit(EXIT_SUCCESS);
}

}  // namespace zarvy
