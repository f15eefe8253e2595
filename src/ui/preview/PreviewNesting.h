#pragma once

#include <QList>
#include <QString>

#include "core/model/SnippetList.h"

namespace zarvy {

// `text` with the replacements of other snippets in the place of {{snippet:trigger}}, down to five
// levels; what is nested deeper stays as it stands, and so does what would make the preview slow
// or immense. A trigger that no snippet has leaves a mark.
[[nodiscard]] QString withNestedSnippets(const QString& text, const SnippetList& snippets);

}  // namespace zarvy
