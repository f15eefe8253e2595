#pragma once

#include <functional>

#include <QSocketNotifier>

#include "base/posix/WakeUp.h"

namespace zarvy {

// Turns SIGTERM and SIGINT, and SIGHUP where it is not ignored already, into a call on the main
// thread. Blocking the signals would do it too, but child processes inherit what is blocked. One
// object at a time, made and destroyed on the main thread, within the life of the
// QCoreApplication; afterwards the signals end the process at once, as is their default.
class TerminationSignals {
 public:
  // `atOnce` is called in the handler of the first signal, whatever the main thread waits for, and
  // does no more than a handler may.
  explicit TerminationSignals(
      std::function<void()> onTermination, void (*atOnce)() = [] {});
  ~TerminationSignals();

  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  WakeUp m_raised;
  QSocketNotifier m_notifier;
};

}  // namespace zarvy
