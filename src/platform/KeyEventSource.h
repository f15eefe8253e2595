#pragma once

#include <functional>
#include <optional>

#include <QString>

namespace zarvy {

// One key-down that was meant for another application.
struct KeyEvent {
  quint16 keyCode = 0;        // a virtual key code, see VirtualKey.h
  quint64 modifierFlags = 0;  // see ModifierFlags.h
  // What the key types with every modifier ignored but Shift and those that belong to the layout
  // (AltGr). Absent where the key types nothing, as for an arrow, an unfinished dead key or, on
  // desktops where that types nothing, a letter with Alt.
  std::optional<QString> charactersIgnoringModifiers;
  double locationX = 0.0;  // syntheticEventMarkerX where this program posted the event itself
};

// Hears every key-down, autorepeat included. The events can be neither changed nor swallowed: a
// platform that could hold them back lets all of them through.
class KeyEventSource {
 public:
  using Handler = std::function<void(const KeyEvent&)>;
  using Token = quint64;

  virtual ~KeyEventSource() = default;

  // Installs `handler` for the keys that are meant for other applications. It is called on the main
  // thread, in typing order. In its place among the keys `onForget` is called where what was typed
  // before no longer stands before the caret, as after a click or where another window has the
  // keyboard, and in place of each key that is secret. Absent where capturing is not
  // possible. Main thread.
  [[nodiscard]] virtual std::optional<Token> addGlobalMonitor(Handler handler,
                                                              std::function<void()> onForget) = 0;

  // The same for the keys that are meant for this program's own windows. There nothing is
  // forgotten.
  [[nodiscard]] virtual std::optional<Token> addLocalMonitor(Handler handler) = 0;

  // Ends it: once this returns neither is called again. Main thread.
  virtual void removeMonitor(Token token) = 0;
};

}  // namespace zarvy
