#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "platform/AccessibilityPermission.h"

namespace zarvy {
class ActivationPolicy;
class HotKeys;
class KeyDetour;
class KeyEventPoster;
class KeyEventSource;
class LineOutput;
class Scheduler;
class SecureInput;
class Workspace;
}  // namespace zarvy

namespace zarvy::x11 {

// Whether the X display that the environment names answers. Asks with a connection of its own, so
// it may be called before anything else is made.
[[nodiscard]] bool canReachDisplay();

// The X11 adapters, on their one connection. Made and dropped on the main thread, after everything
// that types has ended; dropping it gives the scratch keys back.
class X11Session {
 public:
  struct Options {
    QString ownBundleIdentifier;
    // Whether that window of the display is the program's own. Asked on any thread.
    std::function<bool(quint32 window)> isOwnWindow = [](quint32) { return false; };
    // Whether a menu of the program's own has the keyboard, whatever window has the focus. Asked on
    // the main thread.
    std::function<bool()> ownMenuIsOpen = [] { return false; };
    // Whether keys that go down now are to stay unknown to everybody, for a reason that the display
    // does not know of. Asked for each key, on a thread of the session's own.
    std::function<bool()> mustNotBeHeard = [] { return false; };
    // What holds up the keys of some applications; null where nothing does. Outlives the session.
    KeyDetour* keyDetour = nullptr;
    // The keyboard has gone to another window, of that process of this machine; 0 where the process
    // is not known, or no window has the keyboard. Called once at the beginning too. On a thread of
    // the session's own, or the caller's at the beginning.
    std::function<void(qint64 process)> onFocusMoved = [](qint64) {};
    // The display went away; called once, on the main thread.
    std::function<void()> onConnectionLost;
  };

  // Null where there is no display or it lacks an extension; `reason` then says so in one line.
  [[nodiscard]] static std::unique_ptr<X11Session> open(Scheduler& scheduler, LineOutput& output,
                                                        Options options, QString* reason);
  ~X11Session();
  X11Session(const X11Session&) = delete;
  X11Session& operator=(const X11Session&) = delete;

  [[nodiscard]] KeyEventSource& keyEventSource();
  [[nodiscard]] KeyEventPoster& keyEventPoster();
  [[nodiscard]] Workspace& workspace();
  [[nodiscard]] SecureInput& secureInput();
  [[nodiscard]] HotKeys& hotKeys();
  [[nodiscard]] ActivationPolicy& activationPolicy();

  // Has the listeners to keys forget what was typed until now, in its place among the keys. Any
  // thread.
  void forgetWhatWasTyped();

  // What has been typed until now stays unknown to everybody, even if it has not been read yet: to
  // be called before mustNotBeHeard() says that a secret has ended. Any thread.
  void fenceKeys();

  // The process of this machine whose window has the keyboard; 0 where it is not known. Asks the
  // display. Any thread.
  [[nodiscard]] qint64 keyboardOwner() const;

  // Whether windows may let through what is behind them.
  [[nodiscard]] bool hasCompositor() const;

  // The program is about to end: typing that is still under way stops at once. Any thread.
  void abandonTyping();

  // False once the display is gone. Asks it. Any thread.
  [[nodiscard]] bool isAlive() const;

 private:
  struct Keyboards;
  struct Parts;
  explicit X11Session(std::unique_ptr<Parts> parts);

  std::unique_ptr<Parts> m_parts;
};

}  // namespace zarvy::x11
