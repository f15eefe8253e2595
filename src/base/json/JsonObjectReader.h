#pragma once

#include <optional>
#include <type_traits>
#include <utility>

#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUuid>

#include "base/json/JsonResult.h"

namespace zarvy {

// Takes the members of one JSON object out by key and type. Reading goes on after a failure with
// default values; the first failure is kept and becomes the result, so that a decoder is a plain
// list of fields. Unknown keys are ignored.
class JsonObjectReader {
 public:
  explicit JsonObjectReader(const QJsonValue& value);

  // Members that must be present and of the type told.
  [[nodiscard]] QString string(QStringView key);
  [[nodiscard]] bool boolean(QStringView key);
  [[nodiscard]] qint64 integer(QStringView key);
  [[nodiscard]] double number(QStringView key);
  [[nodiscard]] QUuid uuid(QStringView key);
  [[nodiscard]] QList<QUuid> uuids(QStringView key);
  [[nodiscard]] QDateTime instant(QStringView key);

  // A member that must be present and that `decode` can read: it takes a QJsonValue and gives a
  // JsonResult.
  template <typename Decode>
  [[nodiscard]] auto decoded(QStringView key, Decode decode) {
    const QJsonValue value = present(key);
    using Value = std::remove_cvref_t<decltype(decode(value).value())>;
    JsonResult<Value> result = decode(value);
    if (result) return std::move(result).value();
    fail(result.error().inside(placeOf(key)));
    return Value();
  }

  // Members that may be missing or null; absent, or `fallback`, then.
  [[nodiscard]] std::optional<QUuid> optionalUuid(QStringView key);
  [[nodiscard]] std::optional<QDateTime> optionalInstant(QStringView key);
  [[nodiscard]] bool boolean(QStringView key, bool fallback);
  [[nodiscard]] quint16 unsigned16(QStringView key, quint16 fallback);
  // Whole numbers below 2^64.
  [[nodiscard]] quint64 unsigned64(QStringView key, quint64 fallback);

  // Reports the member `key` as wrong; `cause` completes a sentence that begins with the key.
  void fail(QStringView key, const QString& cause);

  // `record`, unless something failed.
  template <typename Record>
  [[nodiscard]] JsonResult<Record> result(Record record) const {
    if (m_error) return *m_error;
    return record;
  }

 private:
  [[nodiscard]] std::optional<QUuid> decodedUuid(QStringView key, const QJsonValue& value);
  [[nodiscard]] std::optional<QDateTime> decodedInstant(QStringView key, const QJsonValue& value);
  void fail(const JsonError& error);
  [[nodiscard]] static QString placeOf(QStringView key);
  [[nodiscard]] QJsonValue present(QStringView key);
  [[nodiscard]] QJsonValue required(QStringView key, QJsonValue::Type type);
  [[nodiscard]] QJsonValue optional(QStringView key, QJsonValue::Type type);
  [[nodiscard]] QJsonValue checked(QStringView key, QJsonValue value, QJsonValue::Type type);

  QJsonObject m_object;
  std::optional<JsonError> m_error;
};

// The whole number of 64 bits that `value` is; absent where it is anything else.
[[nodiscard]] std::optional<qint64> integerFromJson(const QJsonValue& value);

// A JSON integer that reads back as `value`.
[[nodiscard]] QJsonValue jsonNumber(quint64 value);

}  // namespace zarvy
