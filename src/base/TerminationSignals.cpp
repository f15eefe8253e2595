#include "base/TerminationSignals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <utility>

namespace zarvy {

namespace {

constexpr std::array handledSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler has no argument of its own, so what it reaches must be global.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<const WakeUp*> raisedBySignals = nullptr;
static_assert(std::atomic<const WakeUp*>::is_always_lock_free);
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<void (*)()> calledAtOnce = nullptr;
static_assert(std::atomic<void (*)()>::is_always_lock_free);

bool isIgnored(int signal) {
  struct sigaction current {};
  return sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

void setHandler(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

// The first signal asks for a clean end; a second one is not kept waiting for it.
void noteSignal(int) {
  const int before = errno;
  if (void (*const atOnce)() = calledAtOnce) atOnce();
  if (const WakeUp* raised = raisedBySignals) raised->raise();
  for (const int signal : handledSignals) {
    if (!isIgnored(signal)) setHandler(signal, SIG_DFL);
  }
  errno = before;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> onTermination, void (*atOnce)())
    : m_notifier(m_raised.descriptor(), QSocketNotifier::Read) {
  QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                   [this, onTermination = std::move(onTermination)] {
                     m_raised.lower();
                     onTermination();
                   });
  calledAtOnce = atOnce;
  raisedBySignals = &m_raised;
  for (const int signal : handledSignals) {
    const bool isLeftIgnored = signal == SIGHUP && isIgnored(signal);  // as nohup asks for
    if (!isLeftIgnored) setHandler(signal, noteSignal);
  }
}

TerminationSignals::~TerminationSignals() {
  for (const int signal : handledSignals) {
    if (!isIgnored(signal)) setHandler(signal, SIG_DFL);
  }
  raisedBySignals = nullptr;
  calledAtOnce = nullptr;
}

}  // namespace zarvy
