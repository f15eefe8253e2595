#pragma once

#include <QByteArray>
#include <QJsonValue>

#include "base/json/JsonResult.h"

namespace zarvy {

// The one form in which documents are written: UTF-8, members in ascending order of their keys,
// two spaces of indent a level, one member a line, `"key" : value`, a slash as `\/`, no line feed
// at the end. A number that JSON cannot express (infinite, not a number) becomes null. Half of a
// surrogate pair is escaped, so that the text is valid whatever the value holds, and so is U+FEFF,
// which readers drop at the start of a string.
[[nodiscard]] QByteArray writeJson(const QJsonValue& value);

// Reads a document in any layout. The top level is an object or an array. What JsonObjectReader
// makes of a value is exact for all whole numbers of 64 bits, with a sign or without. A string that
// begins with U+FEFF keeps it.
[[nodiscard]] JsonResult<QJsonValue> parseJson(const QByteArray& text);

}  // namespace zarvy
