#include "platform/x11/hearing/X11KeyEventSource.h"

#include <atomic>
#include <utility>

#include "base/Scheduler.h"

namespace zarvy::x11 {

// Touched on the main thread only, but for the count.
struct X11KeyEventSource::Monitors {
  std::function<bool()> ownWindowHasFocus;
  std::map<Token, Handler> handlers;
  std::atomic<bool> isEmpty = true;  // spares the main thread the keys that nobody listens to

  void report(const KeyEvent& event) const {
    if (ownWindowHasFocus()) return;
    const auto current = handlers;  // a handler may remove itself
    for (const auto& [token, handler] : current) {
      if (handlers.contains(token)) handler(event);
    }
  }
};

X11KeyEventSource::X11KeyEventSource(Scheduler& scheduler, std::function<bool()> ownWindowHasFocus)
    : m_scheduler(scheduler), m_monitors(std::make_shared<Monitors>()) {
  m_monitors->ownWindowHasFocus = std::move(ownWindowHasFocus);
}

X11KeyEventSource::~X11KeyEventSource() = default;

std::optional<KeyEventSource::Token> X11KeyEventSource::addGlobalMonitor(Handler handler) {
  m_monitors->handlers.emplace(++m_lastToken, std::move(handler));
  m_monitors->isEmpty = false;
  return m_lastToken;
}

void X11KeyEventSource::removeMonitor(Token token) {
  m_monitors->handlers.erase(token);
  m_monitors->isEmpty = m_monitors->handlers.empty();
}

void X11KeyEventSource::deliver(const KeyEvent& event) {
  if (m_monitors->isEmpty) return;
  m_scheduler.post([monitors = std::weak_ptr(m_monitors), event] {
    if (const auto alive = monitors.lock()) alive->report(event);
  });
}

}  // namespace zarvy::x11
