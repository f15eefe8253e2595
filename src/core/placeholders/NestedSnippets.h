#pragma once

#include <functional>
#include <optional>

#include <QSet>
#include <QString>

namespace zarvy {

// The replacement of the first snippet with exactly this trigger; absent if no snippet has it.
using ReplacementOfTrigger = std::function<std::optional<QString>(const QString& trigger)>;

// Puts the replacements of other snippets in the place of {{snippet:trigger}}, as they are: their
// own placeholders join the text. `visited` holds the triggers on the way down, so that the top
// level begins with none. A chain that comes back to one of them, one of more than ten levels and
// a trigger without a snippet leave a mark.
[[nodiscard]] QString expandNestedSnippets(const QString& text, const QSet<QString>& visited,
                                           const ReplacementOfTrigger& replacementOf);

}  // namespace zarvy
