#pragma once

#include <functional>
#include <map>
#include <memory>

#include "platform/KeyEventSource.h"

namespace zarvy {
class Scheduler;
}

namespace zarvy::x11 {

// Brings the key-downs that KeyCapture decodes over to the main thread.
class X11KeyEventSource final : public KeyEventSource {
 public:
  // `ownMenuIsOpen` is asked on the main thread for each key: it is meant for this program then.
  X11KeyEventSource(Scheduler& scheduler, std::function<bool()> ownMenuIsOpen);
  ~X11KeyEventSource() override;

  [[nodiscard]] std::optional<Token> addGlobalMonitor(Handler handler,
                                                      std::function<void()> onForget) override;
  [[nodiscard]] std::optional<Token> addLocalMonitor(Handler handler) override;
  void removeMonitor(Token token) override;

  // A key went down, while a window of this program's own or another had the focus. On the reader's
  // thread. The program's own keys wait there for deliverOwnKeys() or a key of the user's.
  void deliver(const KeyEvent& event, bool ownWindowHasFocus);

  // Now is the time to bring over the program's own keys: they come in bursts, and each wakes up
  // the main thread. On the reader's thread.
  void deliverOwnKeys();

  // Has the global monitors forget what was typed until now, whatever window has the keyboard. Any
  // thread.
  void deliverForgetting();

 private:
  struct Monitor {
    Handler handler;
    std::function<void()> onForget;
    bool isLocal = false;
  };
  struct Monitors;

  [[nodiscard]] Token add(Monitor monitor);
  void wakeMainThread();

  Scheduler& m_scheduler;
  std::shared_ptr<Monitors> m_monitors;  // tasks on their way hold it weakly
  Token m_lastToken = 0;
};

}  // namespace zarvy::x11
