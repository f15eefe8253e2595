#pragma once

#include <QString>

namespace zarvy {

// May this process hear and send keys. Main thread.
class AccessibilityPermission {
 public:
  virtual ~AccessibilityPermission() = default;

  [[nodiscard]] virtual bool isTrusted() const = 0;

  // Looks again at what the permission depends on, where that may have come since.
  virtual void lookAgain() = 0;

  // Why not, in one line for the user; empty while isTrusted().
  [[nodiscard]] virtual QString reasonForMissing() const = 0;

  // What the user can do about it, in a sentence or two, where it cannot be asked for.
  [[nodiscard]] virtual QString remedy() const = 0;

  // Whether ask() and openSettings() lead the user to where the permission is granted.
  [[nodiscard]] virtual bool canBeAskedFor() const = 0;

  // Has the desktop ask the user, where it does such a thing; returns at once.
  virtual void ask() = 0;

  // Opens the place where the user grants it, where the desktop has one; returns at once.
  virtual void openSettings() = 0;
};

}  // namespace zarvy
