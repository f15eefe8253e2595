#pragma once

#include "core/ExpandedText.h"

namespace zarvy {

// Takes every "{{cursor}}" out of `text`; the first one says where the caret goes. Its offset is
// counted before any is taken out, so that a second one counts with its ten characters.
[[nodiscard]] ExpandedText resolveCursorMarker(const QString& text);

}  // namespace zarvy
