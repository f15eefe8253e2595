#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// What is to be typed for a snippet.
struct ExpandedText {
  QString text;
  // How many user-perceived characters the caret goes back from the end; absent: it stays there.
  std::optional<qsizetype> cursorOffset;

  bool operator==(const ExpandedText&) const = default;
};

// Takes every "{{cursor}}" out of `text`; the first one says where the caret goes. Its offset is
// counted before any is taken out, so that a second one counts with its ten characters.
[[nodiscard]] ExpandedText resolveCursorMarker(const QString& text);

}  // namespace zarvy
