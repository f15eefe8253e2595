#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// What `replacementTemplate` gives as the replacement of `matched`, by ICU's rules for the regular
// expression `whole`, which matches all of it and says by its groups what "$1" and the like are. By
// default there are none. "$0" is the matched text, and a backslash makes the next character
// literal and disappears, but for "\u" and "\U" with a code point behind them. Absent where ICU
// refuses the template, a "$" with neither a group's number nor an escape for instance. Any thread.
[[nodiscard]] std::optional<QString> expandTemplate(const QString& replacementTemplate,
                                                    QStringView matched,
                                                    const char* whole = "\\A[\\s\\S]*");

}  // namespace zarvy
