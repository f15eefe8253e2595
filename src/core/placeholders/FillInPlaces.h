#pragma once

#include <vector>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringView>

#include "core/placeholders/FillInField.h"

namespace zarvy {

// The places in a text that the answer to one field goes to: the fill-ins of one kind and name,
// from left to right, none overlapping. Views into the text.
using FillIns = std::vector<QStringView>;

// {{field:Name}} and {{field:Name:anything}}; the same with "textarea".
[[nodiscard]] FillIns findTextFieldsOf(QStringView text, const QString& name);
[[nodiscard]] FillIns findTextAreasOf(QStringView text, const QString& name);

// {{dropdown:Name:anything}}
[[nodiscard]] FillIns findDropdownsOf(QStringView text, const QString& name);

// {{?:Name}}anything{{/?}}
[[nodiscard]] FillIns findSectionsOf(QStringView text, const QString& name);

// The text with each of its `fillIns` replaced by what `answer` gives as a template for it, or by
// the answer itself where that is no template. The text as it is where it would become too long.
[[nodiscard]] QString withAnswer(const QString& text, const FillIns& fillIns,
                                 const QString& answer);

// The same for sections and what is to stand in the place of all of them: "$1" in it is what the
// section itself holds.
[[nodiscard]] QString withSectionContent(const QString& text, const FillIns& sections,
                                         const QString& content);

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
