#pragma once

#include <optional>

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace zarvy {

// The text forms of the values that JSON has no type for.

// 36 characters, upper-case hexadecimal digits.
[[nodiscard]] QString jsonText(const QUuid& uuid);

// "2026-01-21T09:30:00Z": UTC, whole seconds; a fraction of a second is dropped. What this form
// cannot say (an invalid date, a year outside 1 to 9999) is written as the nearest date that it
// can, an invalid one as the beginning of 1970: a document must stay readable.
[[nodiscard]] QString jsonText(const QDateTime& instant);

// Exactly the 36-character form, digits in either case.
[[nodiscard]] std::optional<QUuid> uuidFromJsonText(QStringView text);

// Exactly the form above; the result is in UTC.
[[nodiscard]] std::optional<QDateTime> instantFromJsonText(QStringView text);

}  // namespace zarvy
