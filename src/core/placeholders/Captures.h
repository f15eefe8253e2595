#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace zarvy {

// The names of the groups that the text of a pattern declares, in order, repetitions included.
// The text alone is read: a name that an escape or a character class makes harmless is listed too.
[[nodiscard]] QStringList scanGroupNames(const QString& pattern);

// Puts the named groups of a regular-expression trigger in the place of {{name}}, in the order of
// the names, each value as it is. A value that holds the placeholder of a later name has it
// replaced too.
[[nodiscard]] QString applyCaptures(const QString& text, const QMap<QString, QString>& captures);

}  // namespace zarvy
