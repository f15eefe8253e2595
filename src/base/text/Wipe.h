#pragma once

#include <cstring>

#include <QString>

namespace zarvy {

// Overwrites the units of `text` from the one at `from` on, so that nothing is left of them in
// memory. A text that is shared with others is left to them.
inline void wipe(QString& text, qsizetype from = 0) {
  if (!text.isDetached() || from >= text.size()) return;
  const auto bytes = static_cast<std::size_t>(text.size() - from) * sizeof(QChar);
  ::explicit_bzero(text.data() + from, bytes);
}

// A copy that shares nothing with `text`, which can be overwritten then.
[[nodiscard]] inline QString unsharedCopy(QStringView text) {
  return QString(text.data(), text.size());
}

}  // namespace zarvy
