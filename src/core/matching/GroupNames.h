#pragma once

#include <QString>
#include <QStringList>

namespace zarvy {

// The names of the groups that the text of a pattern declares, in order, repetitions included.
// The text alone is read: a name that an escape or a character class makes harmless is listed too.
[[nodiscard]] QStringList scanGroupNames(const QString& pattern);

}  // namespace zarvy
