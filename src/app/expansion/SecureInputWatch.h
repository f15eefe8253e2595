#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <QString>

#include "base/Scheduler.h"
#include "platform/SecureInput.h"
#include "platform/Workspace.h"

namespace zarvy {

// Finds out, twice a second while it is started, whether an application has the keyboard for
// itself, and which. The name is looked up only when that begins: a change from one such
// application to another without a gap goes unnoticed. Main thread.
class SecureInputWatch {
 public:
  // All of it outlives this object and what is left of its timer.
  SecureInputWatch(const SecureInput& secureInput, const Workspace& workspace,
                   Scheduler& scheduler);
  ~SecureInputWatch();
  SecureInputWatch(const SecureInputWatch&) = delete;
  SecureInputWatch& operator=(const SecureInputWatch&) = delete;

  // Called after every real change of secureInputAppName(). One handler; null for none.
  void onChange(std::function<void()> handler) { m_onChange = std::move(handler); }

  // The name of the application that has the keyboard for itself; absent where none has, and while
  // the watch is stopped.
  [[nodiscard]] const std::optional<QString>& secureInputAppName() const { return m_appName; }

  // Looks at once, and then again and again.
  void start();
  void stop();

  void checkSecureInput();

 private:
  [[nodiscard]] QString secureInputOwnerName() const;
  void setAppName(const std::optional<QString>& name);

  const SecureInput& m_secureInput;
  const Workspace& m_workspace;
  Scheduler& m_scheduler;
  TaskHandle m_timer;
  std::function<void()> m_onChange;
  bool m_wasSecureInputEnabled = false;
  std::optional<QString> m_appName;
};

}  // namespace zarvy
