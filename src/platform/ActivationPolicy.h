#pragma once

namespace zarvy {

// How the program shows itself on the desktop beside its tray icon. Main thread.
class ActivationPolicy {
 public:
  enum class Kind {
    regular,    // its windows stand in the taskbar and the pager
    accessory,  // they do not
  };

  virtual ~ActivationPolicy() = default;

  // Holds for the windows that are open and for those to come.
  virtual void setActivationPolicy(Kind kind) = 0;
};

}  // namespace zarvy
