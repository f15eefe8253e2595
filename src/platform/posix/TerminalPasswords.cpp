#include "platform/posix/TerminalPasswords.h"

#include <algorithm>
#include <utility>

#include "platform/posix/PseudoTerminals.h"

namespace zarvy {

namespace {

using namespace std::chrono_literals;

// Between a new tab and the first password in it the user types a command. Few programs that have
// no terminal open one later.
constexpr auto lookAgainIntoTerminal = 300ms;
constexpr auto lookAgainIntoOthers = 2000ms;
constexpr auto lookAgainForOwner = 300ms;

}  // namespace

void TerminalPasswords::start(std::function<void()> onEnd) {
  const std::lock_guard lock(m_mutex);
  m_onEnd = std::move(onEnd);
  findTerminals();
  if (m_told == 0) m_lastLook = {};  // the next key may be the first of a password
}

void TerminalPasswords::stop() {
  const std::lock_guard lock(m_mutex);
  m_onEnd = nullptr;
}

void TerminalPasswords::follow(qint64 process) {
  const std::lock_guard lock(m_mutex);
  if (process == m_told && process != 0) return;
  m_told = process;
  m_process = process;
  findTerminals();
  if (process == 0) m_lastLook = {};  // as above
  if (m_onEnd) static_cast<void>(ask());
}

bool TerminalPasswords::mustNotBeHeard() const {
  const std::lock_guard lock(m_mutex);
  if (!m_onEnd) return false;
  if (mustLookAgain()) {
    if (m_told == 0) m_process = m_keyboardOwner();
    findTerminals();
  }
  return ask();
}

bool TerminalPasswords::mustLookAgain() const {
  const auto patience = m_told == 0           ? lookAgainForOwner
                        : m_terminals.empty() ? lookAgainIntoOthers
                                              : lookAgainIntoTerminal;
  return Clock::now() - m_lastLook >= patience;
}

void TerminalPasswords::findTerminals() const {
  m_lastLook = Clock::now();
  m_terminals.clear();
  if (m_process == 0) return;
  const auto process = static_cast<pid_t>(m_process);
  m_terminals = pseudoTerminalsOf(process);
  if (m_terminals.empty()) return;
  for (const pid_t server : m_multiplexers.serversBehind(process)) {
    const std::vector<int> panes = pseudoTerminalsOf(server);
    m_terminals.insert(m_terminals.end(), panes.begin(), panes.end());
  }
}

// A key that is asked about when the prompt has just ended may have been typed before that.
bool TerminalPasswords::ask() const {
  const bool isSecret = std::any_of(m_terminals.begin(), m_terminals.end(), &readsHiddenLine);
  const bool wasSecret = std::exchange(m_isSecret, isSecret);
  if (wasSecret && !isSecret) m_onEnd();
  return wasSecret || isSecret;
}

bool TerminalPasswords::isSecureEventInputEnabled() const {
  return mustNotBeHeard();
}

std::optional<qint32> TerminalPasswords::ownerProcessIdentifier() const {
  const std::lock_guard lock(m_mutex);
  return m_process > 0 ? std::optional(static_cast<qint32>(m_process)) : std::nullopt;
}

}  // namespace zarvy
