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

}  // namespace zarvy
