#pragma once

#include "platform/AccessibilityPermission.h"

namespace zarvy {

class ActivationPolicy;
class HotKeys;
class InputMethod;
class KeyEventPoster;
class KeyEventSource;
class Pasteboard;
class SecureInput;
class Workspace;

// What depends on whether there is a desktop.
struct DesktopParts {
  KeyEventSource& keyEventSource;
  KeyEventPoster& keyEventPoster;
  Workspace& workspace;
  SecureInput& secureInput;
  HotKeys& hotKeys;
  ActivationPolicy& activationPolicy;
};

// Those of an object that is all of them.
template <typename Whole>
[[nodiscard]] DesktopParts partsOf(Whole& whole) {
  return {whole, whole, whole, whole, whole, whole};
}

// The desktop that the program stands on: there from the start, found later, or missing for good.
// Whether it may be used is its own to say, as the permission that it is. Made by makeDesktop() in
// platform/desktop. Made and dropped on the main thread, after everything that types has ended;
// dropping it gives back what it has changed on the desktop.
class Desktop : public AccessibilityPermission {
 public:
  // All three live as long as this object. The parts do nothing while there is no desktop and after
  // close().
  [[nodiscard]] virtual const DesktopParts& parts() const = 0;
  // What other programs have copied, without what was copied in the program's own windows.
  [[nodiscard]] virtual const Pasteboard& othersClipboard() const = 0;
  [[nodiscard]] virtual InputMethod& inputMethod() = 0;

  // Whether windows may let through what is behind them. Main thread.
  [[nodiscard]] virtual bool hasCompositor() const = 0;

  // Typing that is still under way stops at once. Any thread.
  virtual void abandonTyping() = 0;

  // The end of the desktop for this program. After everything that hears and types has ended. Says
  // that the desktop is gone where that has not been said. Main thread.
  virtual void close() = 0;
};

}  // namespace zarvy
