#pragma once

#include <QString>

namespace zarvy {

// The beginning of `text`, on one line: more than fits a label of any width, and yet not so much
// that measuring it takes its time.
[[nodiscard]] QString oneLine(const QString& text);

// `text` as a tool tip that shows it as it stands, and does not cover the screen.
[[nodiscard]] QString plainToolTip(const QString& text);

}  // namespace zarvy
