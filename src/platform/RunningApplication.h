#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// An application as the desktop knows it.
struct RunningApplication {
  qint64 processIdentifier = 0;             // 0 where the desktop does not tell
  std::optional<QString> bundleIdentifier;  // on X11 the class of its windows (WM_CLASS)
  std::optional<QString> localizedName;
  quint64 nativeWindow = 0;  // the window that was in front when the record was made; 0 for none

  bool operator==(const RunningApplication&) const = default;
};

}  // namespace zarvy
