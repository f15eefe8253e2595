#pragma once

#include <optional>

#include <QStringView>

namespace zarvy {

// Numbers in decimal digits, of any script: what "\d" means in a regular expression. Any thread.

// How many UTF-16 units of `text` are digits, from its start on.
[[nodiscard]] qsizetype leadingDigits(QStringView text);

// The number that `text` consists of: digits, with or without a sign before them. Absent where it
// does not fit into 64 bits, and where `text` is anything else.
[[nodiscard]] std::optional<qint64> readInteger(QStringView text);

}  // namespace zarvy
