#pragma once

#include <QtGlobal>

namespace zarvy {

// A key that is pressed together with modifiers.
struct HotKey {
  quint16 keyCode = 0;    // a virtual key code
  quint64 modifiers = 0;  // exactly these, Caps Lock apart

  bool operator==(const HotKey&) const = default;
};

// Whose the keys of the desktop are. Main thread.
class HotKeys {
 public:
  virtual ~HotKeys() = default;

  // Whether another program has kept that key for itself, so that something of its own happens when
  // it is pressed. Asks the desktop; quick enough to be asked at each press.
  [[nodiscard]] virtual bool isTakenByAnother(const HotKey& key) const = 0;
};

}  // namespace zarvy
