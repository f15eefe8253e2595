#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include "core/placeholders/FillInField.h"

namespace zarvy {

// Puts the answers of a form, by the name of the field, in the place of every fill-in of that name,
// whatever default or flag it carries. First the optional sections among `fields`, whose content
// may hold other fields, then the rest of `fields` in their order, then the answers to other names
// in the order of the map; each is put into the text that the ones before it have left.
//
// An answer is read as the replacement template of a regular expression: `$0` is the placeholder
// itself, a backslash makes the next character literal and disappears. One that is no template, a
// price in dollars for instance, goes in as it is.
[[nodiscard]] QString substituteFillInValues(const QString& text, const QList<FillInField>& fields,
                                             const QMap<QString, QString>& values);

}  // namespace zarvy
