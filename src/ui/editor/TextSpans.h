#pragma once

#include <optional>
#include <vector>

#include "base/text/Regex.h"
#include "ui/style/Ink.h"

namespace zarvy {

// How a stretch of a text looks apart from the rest of it.
struct SpanLook {
  Ink ink = TextColor::primary;
  std::optional<Ink> ground = std::nullopt;  // of which a faint trace lies behind the text
  bool isBold = false;

  bool operator==(const SpanLook&) const = default;
};

struct TextSpan {
  TextRange range;  // in UTF-16 units
  SpanLook look;

  bool operator==(const TextSpan&) const = default;
};

// The same looks without overlaps, from left to right. Where spans meet, a later one of the list
// overwrites the ink of the earlier ones, and their ground where it has one; what is bold by any of
// them is bold. Empty spans have no effect.
[[nodiscard]] std::vector<TextSpan> withoutOverlaps(const std::vector<TextSpan>& spans);

}  // namespace zarvy
