#pragma once

#include <QString>

namespace zarvy {

// May this process hear and send keys. Main thread.
class AccessibilityPermission {
 public:
  virtual ~AccessibilityPermission() = default;

  [[nodiscard]] virtual bool isTrusted() const = 0;

  // Why not, in one line for the user; empty while isTrusted().
  [[nodiscard]] virtual QString reasonForMissing() const = 0;
};

}  // namespace zarvy
