#pragma once

#include <vector>

#include <QStringView>

#include "ui/editor/TextSpans.h"

namespace zarvy {

// The placeholders of `text` in the colours of their kinds, each on a faint ground of its colour,
// kind by kind. Commands have no colour, and neither has what stands between the marks of an
// optional section. Takes a time that grows with the length of the text alone.
[[nodiscard]] std::vector<TextSpan> placeholderSpans(QStringView text);

}  // namespace zarvy
