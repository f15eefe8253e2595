#pragma once

#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "platform/KeyEventSource.h"

namespace zarvy {

// Key presses that the test makes up. Main thread.
class FakeKeyEventSource final : public KeyEventSource {
 public:
  std::optional<Token> addGlobalMonitor(Handler handler, std::function<void()> onForget) override {
    ++m_addCount;
    if (!m_canHear) return std::nullopt;
    m_handlers.emplace(++m_lastToken, std::move(handler));
    m_forgetters.emplace(m_lastToken, std::move(onForget));
    return m_lastToken;
  }

  std::optional<Token> addLocalMonitor(Handler handler) override {
    if (!m_canHear) return std::nullopt;
    m_localHandlers.emplace(++m_lastToken, std::move(handler));
    return m_lastToken;
  }

  void removeMonitor(Token token) override {
    m_handlers.erase(token);
    m_forgetters.erase(token);
    m_localHandlers.erase(token);
  }

  // Whether addGlobalMonitor() hands out tokens from now on.
  void setCanHear(bool canHear) { m_canHear = canHear; }

  // A key press in a window of this program.
  void pressHere(quint16 keyCode, quint64 modifierFlags = 0) const {
    const auto handlers = m_localHandlers;
    for (const auto& [token, handler] : handlers) {
      handler({keyCode, modifierFlags, std::nullopt, 0.0});
    }
  }

  // Calls every handler installed for other applications.
  void send(const KeyEvent& event) const {
    const auto handlers = m_handlers;
    for (const auto& [token, handler] : handlers) handler(event);
  }

  // A key press that types `characters`.
  void type(const QString& characters, quint16 keyCode = 0, quint64 modifierFlags = 0) const {
    send({keyCode, modifierFlags, characters, 0.0});
  }

  // A key press that types nothing.
  void press(quint16 keyCode, quint64 modifierFlags = 0) const {
    send({keyCode, modifierFlags, std::nullopt, 0.0});
  }

  // What was typed so far is none of what stands before the caret.
  void forget() const {
    const auto forgetters = m_forgetters;
    for (const auto& [token, onForget] : forgetters) onForget();
  }

  [[nodiscard]] std::size_t handlerCount() const { return m_handlers.size(); }
  [[nodiscard]] std::size_t localHandlerCount() const { return m_localHandlers.size(); }
  [[nodiscard]] int addCount() const { return m_addCount; }

  // Copies of what is installed, for a test of what happens to late events.
  [[nodiscard]] std::map<Token, Handler> handlers() const { return m_handlers; }
  [[nodiscard]] std::map<Token, std::function<void()>> forgetters() const { return m_forgetters; }

 private:
  bool m_canHear = true;
  int m_addCount = 0;
  Token m_lastToken = 0;
  std::map<Token, Handler> m_handlers;
  std::map<Token, std::function<void()>> m_forgetters;
  std::map<Token, Handler> m_localHandlers;
};

}  // namespace zarvy
