#include "platform/x11/capture/X11KeyEventSource.h"

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "base/Scheduler.h"
#include "platform/SyntheticEvent.h"

namespace zarvy::x11 {

// Touched on the main thread only, but for the count and the reports that wait for that thread.
struct X11KeyEventSource::Monitors {
  using Report = std::function<void(const Monitors& monitors)>;

  std::function<bool()> ownMenuIsOpen;
  std::map<Token, Monitor> monitors;
  std::atomic<bool> isEmpty = true;  // spares the main thread the keys that have no listener

  std::mutex mutex;
  std::vector<Report> waiting;   // under the mutex
  bool isAboutToReport = false;  // under the mutex

  void enqueue(Report report) {
    const std::lock_guard lock(mutex);
    waiting.push_back(std::move(report));
  }

  // True where reportWaiting() is to be called on the main thread.
  [[nodiscard]] bool mustReport() {
    const std::lock_guard lock(mutex);
    return !waiting.empty() && !std::exchange(isAboutToReport, true);
  }

  void reportWaiting() {
    std::vector<Report> reports;
    {
      const std::lock_guard lock(mutex);
      reports.swap(waiting);
      isAboutToReport = false;
    }
    for (const Report& report : reports) report(*this);
  }

  void report(const KeyEvent& event, bool isLocal) const {
    tellEach([&](const Monitor& monitor) {
      if (monitor.isLocal == isLocal) monitor.handler(event);
    });
  }

  void reportForgetting() const {
    tellEach([](const Monitor& monitor) {
      if (!monitor.isLocal) monitor.onForget();
    });
  }

  template <typename Tell>
  void tellEach(const Tell& tell) const {
    const auto current = monitors;  // one may remove itself
    for (const auto& [token, monitor] : current) {
      if (monitors.contains(token)) tell(monitor);
    }
  }
};

X11KeyEventSource::X11KeyEventSource(Scheduler& scheduler, std::function<bool()> ownMenuIsOpen)
    : m_scheduler(scheduler), m_monitors(std::make_shared<Monitors>()) {
  m_monitors->ownMenuIsOpen = std::move(ownMenuIsOpen);
}

X11KeyEventSource::~X11KeyEventSource() = default;

std::optional<KeyEventSource::Token> X11KeyEventSource::addGlobalMonitor(
    Handler handler, std::function<void()> onForget) {
  return add({std::move(handler), std::move(onForget), false});
}

std::optional<KeyEventSource::Token> X11KeyEventSource::addLocalMonitor(Handler handler) {
  return add({std::move(handler), nullptr, true});
}

KeyEventSource::Token X11KeyEventSource::add(Monitor monitor) {
  m_monitors->monitors.emplace(++m_lastToken, std::move(monitor));
  m_monitors->isEmpty = false;
  return m_lastToken;
}

void X11KeyEventSource::removeMonitor(Token token) {
  m_monitors->monitors.erase(token);
  m_monitors->isEmpty = m_monitors->monitors.empty();
}

void X11KeyEventSource::deliver(const KeyEvent& event, bool ownWindowHasFocus) {
  if (m_monitors->isEmpty) return;
  m_monitors->enqueue([event, ownWindowHasFocus](const Monitors& monitors) {
    monitors.report(event, ownWindowHasFocus || monitors.ownMenuIsOpen());
  });
  if (!isSyntheticLocation(event.locationX)) wakeMainThread();
}

void X11KeyEventSource::deliverOwnKeys() {
  wakeMainThread();
}

void X11KeyEventSource::deliverForgetting() {
  if (m_monitors->isEmpty) return;
  m_monitors->enqueue([](const Monitors& monitors) { monitors.reportForgetting(); });
  wakeMainThread();
}

void X11KeyEventSource::wakeMainThread() {
  if (!m_monitors->mustReport()) return;
  m_scheduler.post([monitors = std::weak_ptr(m_monitors)] {
    if (const auto alive = monitors.lock()) alive->reportWaiting();
  });
}

}  // namespace zarvy::x11
