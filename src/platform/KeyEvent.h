#pragma once

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

}  // namespace zarvy
