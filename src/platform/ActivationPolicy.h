#pragma once

#include <QtGlobal>

namespace zarvy {

// How the program shows itself on the desktop beside its tray icon. Main thread.
class ActivationPolicy {
 public:
  enum class Kind {
    regular,    // its windows stand in the taskbar and the pager
    accessory,  // they do not
  };

  virtual ~ActivationPolicy() = default;

  // Regular until this is called. Holds for the windows that are open and for those to come.
  virtual void setActivationPolicy(Kind kind) = 0;

  // That window stands in neither, whatever the kind. Called ahead of its coming to the screen.
  virtual void leaveOut(quint64 nativeWindow) = 0;

  // Tells of a window of the program that has come to the screen. May tell of it again.
  virtual void windowOpened(quint64 nativeWindow) = 0;

  // That window is about to go.
  virtual void windowClosed(quint64 nativeWindow) = 0;
};

}  // namespace zarvy
