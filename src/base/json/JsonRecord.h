#pragma once

#include <optional>
#include <tuple>
#include <utility>

#include <QDateTime>
#include <QHashFunctions>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUuid>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonResult.h"
#include "base/json/JsonScalars.h"

namespace zarvy {

// The fields of a record are described once, as a tuple of these. The description gives the form
// of the record in documents, both ways, and its hash.
template <typename Record, typename Value, bool hasDefault>
struct JsonField {
  QStringView key;
  Value Record::*member;
};

// A field that must be there, unless it is a std::optional.
template <typename Record, typename Value>
constexpr JsonField<Record, Value, false> jsonField(QStringView key, Value Record::*member) {
  return {key, member};
}

// One that may be missing or null; the record then keeps what a new one has.
template <typename Record, typename Value>
constexpr JsonField<Record, Value, true> jsonFieldWithDefault(QStringView key,
                                                              Value Record::*member) {
  return {key, member};
}

// How a field of each type is read and written. A type of its own, such as an enumeration, brings
// its own two functions along.
inline void readMember(JsonObjectReader& reader, QStringView key, QString& value) {
  value = reader.string(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, bool& value) {
  value = reader.boolean(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, qint64& value) {
  value = reader.integer(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, double& value) {
  value = reader.number(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, QUuid& value) {
  value = reader.uuid(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, QList<QUuid>& value) {
  value = reader.uuids(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, QDateTime& value) {
  value = reader.instant(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, std::optional<QUuid>& value) {
  value = reader.optionalUuid(key);
}
inline void readMember(JsonObjectReader& reader, QStringView key, std::optional<QDateTime>& value) {
  value = reader.optionalInstant(key);
}
inline void readMemberWithDefault(JsonObjectReader& reader, QStringView key, bool& value) {
  value = reader.boolean(key, value);
}
inline void readMemberWithDefault(JsonObjectReader& reader, QStringView key, quint16& value) {
  value = reader.unsigned16(key, value);
}
inline void readMemberWithDefault(JsonObjectReader& reader, QStringView key, quint64& value) {
  value = reader.unsigned64(key, value);
}

template <typename Value>
QJsonValue jsonValue(const Value& value) {
  return QJsonValue(value);
}
inline QJsonValue jsonValue(quint64 value) {
  return jsonNumber(value);
}
inline QJsonValue jsonValue(const QUuid& value) {
  return jsonText(value);
}
inline QJsonValue jsonValue(const QDateTime& value) {
  return jsonText(value);
}
inline QJsonValue jsonValue(const QList<QUuid>& values) {
  QJsonArray array;
  for (const QUuid& value : values) array.append(jsonText(value));
  return array;
}

template <typename Record, typename Value, bool hasDefault>
void readField(JsonObjectReader& reader, const JsonField<Record, Value, hasDefault>& field,
               Record& record) {
  if constexpr (hasDefault) {
    readMemberWithDefault(reader, field.key, record.*field.member);
  } else {
    readMember(reader, field.key, record.*field.member);
  }
}

// Fields are read in the order of the description; the first failure is the result.
template <typename Record, typename... Fields>
[[nodiscard]] JsonResult<Record> recordFromJson(const QJsonValue& value,
                                                const std::tuple<Fields...>& fields) {
  JsonObjectReader reader(value);
  Record record;
  std::apply([&](const Fields&... field) { (readField(reader, field, record), ...); }, fields);
  return reader.result(std::move(record));
}

// A std::optional that is absent has no key.
template <typename Record, typename... Fields>
[[nodiscard]] QJsonObject recordToJson(const Record& record, const std::tuple<Fields...>& fields) {
  QJsonObject object;
  const auto write = [&](const auto& field) {
    const auto& value = record.*field.member;
    if constexpr (requires { value.has_value(); }) {
      if (value) object.insert(field.key, jsonValue(*value));
    } else {
      object.insert(field.key, jsonValue(value));
    }
  };
  std::apply([&write](const Fields&... field) { (write(field), ...); }, fields);
  return object;
}

template <typename Record, typename... Fields>
[[nodiscard]] size_t recordHash(const Record& record, const std::tuple<Fields...>& fields,
                                size_t seed) noexcept {
  using ::qHash;  // of numbers, which the overloads of records would hide
  const auto hash = [&](const auto& field) {
    const auto& value = record.*field.member;
    if constexpr (requires { value.has_value(); }) {
      return value ? qHashMulti(size_t{1}, *value) : size_t{0};
    } else {
      return qHash(value, size_t{0});
    }
  };
  return std::apply([&](const Fields&... field) { return qHashMulti(seed, hash(field)...); },
                    fields);
}

}  // namespace zarvy
