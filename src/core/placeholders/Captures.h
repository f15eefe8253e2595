#pragma once

#include <QMap>
#include <QString>

namespace zarvy {

// Puts the named groups of a regular-expression trigger in the place of {{name}}, in the order of
// the names, each value as it is. A value that holds the placeholder of a later name has it
// replaced too.
[[nodiscard]] QString applyCaptures(const QString& text, const QMap<QString, QString>& captures);

}  // namespace zarvy
