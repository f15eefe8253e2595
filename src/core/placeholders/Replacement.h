#pragma once

#include <functional>

#include <QString>

#include "core/placeholders/ExpansionLimit.h"
#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {

// Replaces every occurrence of `literal` at once, from left to right; the value is inserted as it
// is and not searched again. The text stays as it was where it would become too long. False where
// the limit is used up, and then the text is as it was.
bool replaceLiteral(QString& text, QStringView literal, QStringView value, ExpansionLimit& limit);

using ValueOfPlaceholder = std::function<QString(const Placeholder&)>;

// The rule of the language for one kind of placeholder. Takes all placeholders of `form`, once. For
// each, from left to right, asks for its value and replaces every occurrence of the placeholder in
// the text, as that now stands, by the value. So a placeholder that stands twice is asked for
// twice, and the first value takes both places; a value that holds a placeholder which is still to
// come has it replaced, one that holds any other keeps it.
[[nodiscard]] QString replacePlaceholders(const QString& text, const PlaceholderForm& form,
                                          const ValueOfPlaceholder& valueOf, ExpansionLimit& limit);

}  // namespace zarvy
