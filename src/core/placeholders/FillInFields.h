#pragma once

#include <QList>
#include <QString>

#include "core/placeholders/FillInField.h"

namespace zarvy {

class FieldDefaults;

// The inputs that a text asks for, grouped by kind and in the text's order within a kind: text
// fields, text areas, dropdowns, optional sections. The first placeholder of a name settles the
// field; only a text field and a text area can share one. Empty where the text asks for none.
[[nodiscard]] QList<FillInField> parseFillInFields(const QString& text,
                                                   const FieldDefaults& defaults);

}  // namespace zarvy
