#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/SecureInput.h"
#include "platform/posix/TerminalMultiplexers.h"

namespace zarvy {

// Takes a prompt for a password in a terminal for secure input: a program that reads a line there
// has turned off that it is shown. All tabs of the terminal count, also those that are not in
// front, and the panes of terminal multiplexers that are shown in it.
//
// Not seen are prompts that read key by key (with asterisks for what is typed) and those on the far
// side of a connection, whose terminal is another machine's.
class TerminalPasswords final : public SecureInput {
 public:
  // `keyboardOwner` asks the display for the process that the next key goes to, 0 where it is not
  // known. It is asked, a few times a second at most and on any thread, while follow() has told of
  // none: the keyboard then goes to whatever window is under the pointer. Not after stop().
  explicit TerminalPasswords(std::function<qint64()> keyboardOwner)
      : m_keyboardOwner(std::move(keyboardOwner)) {}

  // Begins to ask the terminals, once. `onEnd` is called when a prompt turns out to have ended, on
  // the thread that has asked: what was typed until now is to stay unknown though it may not have
  // been read yet. Any thread.
  void start(std::function<void()> onEnd);

  // Nothing is called and nothing is secret any more. Any thread.
  void stop();

  // The keyboard has gone to a window of that process of this machine; 0 where it is not known. Any
  // thread.
  void follow(qint64 process);

  // Whether what is typed now must not be heard. Asks the terminals: some 5 us for each tab.
  // Looks for new tabs now and then, and for the owner of the keyboard where follow() has not told
  // it, which waits for the display. Any thread.
  [[nodiscard]] bool mustNotBeHeard() const;

  [[nodiscard]] bool isSecureEventInputEnabled() const override;
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override;

 private:
  using Clock = std::chrono::steady_clock;
  [[nodiscard]] bool mustLookAgain() const;
  void findTerminals() const;
  [[nodiscard]] bool ask() const;

  const std::function<qint64()> m_keyboardOwner;

  mutable std::mutex m_mutex;     // guards all below
  std::function<void()> m_onEnd;  // empty before start()
  qint64 m_told = 0;              // by follow()
  mutable qint64 m_process = 0;   // the same, or what was found where that is not known
  mutable TerminalMultiplexers m_multiplexers;
  mutable std::vector<int> m_terminals;  // the pseudoterminals of the process
  mutable Clock::time_point m_lastLook;  // for those
  mutable bool m_isSecret = false;
};

}  // namespace zarvy
