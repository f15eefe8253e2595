#pragma once

#include <string>
#include <string_view>

#include "jsworker/ScriptContext.h"
#include "jsworker/wire/ScriptWire.h"

namespace zarvy {

struct ScriptRequest {
  std::u16string expression;
  std::string zoneName;
};

// The worker's end of the socket. When the program at the other end is gone, or says what is not
// agreed, the process ends: there is nothing left to do for it.
class Channel {
 public:
  explicit Channel(int socket) : m_socket(socket) {}

  void sendReady() const;
  [[nodiscard]] ScriptRequest receiveRequest() const;
  // Whether a request is there already.
  [[nodiscard]] bool isAsked() const;
  // Only between a request and its result.
  [[nodiscard]] scriptwire::ClockAnswer ask(const scriptwire::ClockQuestion& question) const;
  void sendResult(const ScriptResult& result) const;

 private:
  void send(const void* data, std::size_t size) const;
  void sendText(std::u16string_view text) const;
  void receive(void* data, std::size_t size) const;

  const int m_socket;
};

}  // namespace zarvy
