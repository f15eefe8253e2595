#pragma once

namespace zarvy {

class ActivationPolicy;
class HotKeys;
class KeyEventPoster;
class KeyEventSource;
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

}  // namespace zarvy
