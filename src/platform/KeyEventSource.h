#pragma once

#include <functional>
#include <optional>

#include "platform/KeyEvent.h"

namespace zarvy {

// Hears every key-down, autorepeat included. The events can be neither changed nor swallowed.
class KeyEventSource {
 public:
  using Handler = std::function<void(const KeyEvent&)>;
  using Token = quint64;

  virtual ~KeyEventSource() = default;

  // Installs `handler` for the keys that are meant for other applications. It is called on the main
  // thread, in typing order. Absent where hearing is not possible. Main thread.
  [[nodiscard]] virtual std::optional<Token> addGlobalMonitor(Handler handler) = 0;

  // The same for the keys that are meant for this program's own windows.
  [[nodiscard]] virtual std::optional<Token> addLocalMonitor(Handler handler) = 0;

  // Ends it: once this returns the handler is not called again. Main thread.
  virtual void removeMonitor(Token token) = 0;
};

}  // namespace zarvy
