#include "platform/x11/hearing/X11KeyEventSource.h"

#include <atomic>
#include <utility>

#include "base/Scheduler.h"
#include "platform/x11/hearing/ForgettingKey.h"

namespace zarvy::x11 {

// Touched on the main thread only, but for the count.
struct X11KeyEventSource::Monitors {
  std::function<bool()> ownMenuIsOpen;
  std::map<Token, Monitor> monitors;
  std::atomic<bool> isEmpty = true;  // spares the main thread the keys that nobody listens to

  void report(const KeyEvent& event, bool isLocal) const {
    const auto current = monitors;  // a handler may remove itself
    for (const auto& [token, monitor] : current) {
      if (monitor.isLocal == isLocal && monitors.contains(token)) monitor.handler(event);
    }
  }
};

X11KeyEventSource::X11KeyEventSource(Scheduler& scheduler, std::function<bool()> ownMenuIsOpen)
    : m_scheduler(scheduler), m_monitors(std::make_shared<Monitors>()) {
  m_monitors->ownMenuIsOpen = std::move(ownMenuIsOpen);
}

X11KeyEventSource::~X11KeyEventSource() = default;

std::optional<KeyEventSource::Token> X11KeyEventSource::addGlobalMonitor(Handler handler) {
  return add({std::move(handler), false});
}

std::optional<KeyEventSource::Token> X11KeyEventSource::addLocalMonitor(Handler handler) {
  return add({std::move(handler), true});
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
  post([event, ownWindowHasFocus](const Monitors& monitors) {
    monitors.report(event, ownWindowHasFocus || monitors.ownMenuIsOpen());
  });
}

void X11KeyEventSource::deliverForgetting() {
  post([](const Monitors& monitors) { monitors.report(forgettingKey(), false); });
}

void X11KeyEventSource::post(std::function<void(const Monitors& monitors)> report) {
  if (m_monitors->isEmpty) return;
  m_scheduler.post([monitors = std::weak_ptr(m_monitors), report = std::move(report)] {
    if (const auto alive = monitors.lock()) report(*alive);
  });
}

}  // namespace zarvy::x11
