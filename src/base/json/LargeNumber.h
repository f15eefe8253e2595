#pragma once

#include <optional>

#include <QByteArray>
#include <QJsonValue>

namespace zarvy {

// Whole numbers from 2^63 up to below 2^64. Qt's JSON has no place for them: it keeps what is no
// integer of 64 bits with a sign as floating point, which is as much as 1024 away. Here such a
// number is an object with one member of a name that no document uses, and the reader, the parser
// and the writer of this folder take it for the number that it is.
namespace largenumber {

// `number` is 2^63 or more.
[[nodiscard]] QJsonValue toJson(quint64 number);

// Absent where `value` is anything else.
[[nodiscard]] std::optional<quint64> fromJson(const QJsonValue& value);

// A valid document with its large numbers as such objects. Fast for a document without large
// numbers.
[[nodiscard]] QByteArray marked(const QByteArray& document);

}  // namespace largenumber
}  // namespace zarvy
