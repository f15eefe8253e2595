#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// What `replacementTemplate` gives as the replacement of `matched`, by ICU's rules for a regular
// expression without groups: "$0" is the matched text, and a backslash makes the next character
// literal and disappears, but for "\u" and "\U" with a code point behind them. Absent where ICU
// refuses the template, a "$" with neither a 0 nor an escape for instance. Any thread.
[[nodiscard]] std::optional<QString> expandTemplate(const QString& replacementTemplate,
                                                    QStringView matched);

}  // namespace zarvy
