#include "base/json/JsonObjectReader.h"

#include <limits>

#include <QJsonArray>

#include "base/json/JsonScalars.h"
#include "base/json/LargeNumber.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QJsonValue::Type typeOf(const QJsonValue& value) {
  return largenumber::fromJson(value) ? QJsonValue::Double : value.type();
}

QString typeName(QJsonValue::Type type) {
  switch (type) {
    case QJsonValue::Bool:
      return u"a boolean"_s;
    case QJsonValue::Double:
      return u"a number"_s;
    case QJsonValue::String:
      return u"a string"_s;
    case QJsonValue::Array:
      return u"an array"_s;
    case QJsonValue::Object:
      return u"an object"_s;
    default:
      return u"null"_s;
  }
}

std::optional<quint64> unsignedNumber(const QJsonValue& value) {
  if (const auto number = integerFromJson(value)) {
    if (*number < 0) return std::nullopt;
    return static_cast<quint64>(*number);
  }
  if (const auto number = largenumber::fromJson(value)) return number;
  // Written with an exponent or a fraction of nothing.
  const double number = value.toDouble();
  if (!(number >= 0x1p63 && number < 0x1p64)) return std::nullopt;
  return static_cast<quint64>(number);
}

}  // namespace

JsonObjectReader::JsonObjectReader(const QJsonValue& value) : m_object(value.toObject()) {
  if (!value.isObject()) m_error = JsonError{{}, u"is not an object"_s};
}

QString JsonObjectReader::string(QStringView key) {
  return required(key, QJsonValue::String).toString();
}

bool JsonObjectReader::boolean(QStringView key) {
  return required(key, QJsonValue::Bool).toBool();
}

qint64 JsonObjectReader::integer(QStringView key) {
  const auto number = integerFromJson(required(key, QJsonValue::Double));
  if (!number) fail(key, u"is not a whole number of 64 bits"_s);
  return number.value_or(0);
}

double JsonObjectReader::number(QStringView key) {
  const QJsonValue value = required(key, QJsonValue::Double);
  if (const auto large = largenumber::fromJson(value)) return static_cast<double>(*large);
  return value.toDouble();
}

QUuid JsonObjectReader::uuid(QStringView key) {
  return decodedUuid(key, required(key, QJsonValue::String)).value_or(QUuid());
}

QList<QUuid> JsonObjectReader::uuids(QStringView key) {
  QList<QUuid> uuids;
  for (const QJsonValue value : required(key, QJsonValue::Array).toArray()) {
    uuids.append(decodedUuid(key, value).value_or(QUuid()));
  }
  return uuids;
}

QDateTime JsonObjectReader::instant(QStringView key) {
  return decodedInstant(key, required(key, QJsonValue::String)).value_or(QDateTime());
}

std::optional<QUuid> JsonObjectReader::optionalUuid(QStringView key) {
  const QJsonValue value = optional(key, QJsonValue::String);
  return value.isString() ? decodedUuid(key, value) : std::nullopt;
}

std::optional<QDateTime> JsonObjectReader::optionalInstant(QStringView key) {
  const QJsonValue value = optional(key, QJsonValue::String);
  return value.isString() ? decodedInstant(key, value) : std::nullopt;
}

bool JsonObjectReader::boolean(QStringView key, bool fallback) {
  return optional(key, QJsonValue::Bool).toBool(fallback);
}

quint16 JsonObjectReader::unsigned16(QStringView key, quint16 fallback) {
  const quint64 number = unsigned64(key, fallback);
  if (number > std::numeric_limits<quint16>::max()) {
    fail(key, u"is not a whole number from 0 to 65535"_s);
    return fallback;
  }
  return static_cast<quint16>(number);
}

quint64 JsonObjectReader::unsigned64(QStringView key, quint64 fallback) {
  const QJsonValue value = optional(key, QJsonValue::Double);
  if (typeOf(value) != QJsonValue::Double) return fallback;
  const auto number = unsignedNumber(value);
  if (!number) fail(key, u"is not a whole number of 0 or more in 64 bits"_s);
  return number.value_or(fallback);
}

void JsonObjectReader::fail(QStringView key, const QString& cause) {
  fail(JsonError{placeOf(key), cause});
}

void JsonObjectReader::fail(const JsonError& error) {
  if (!m_error) m_error = error;
}

QString JsonObjectReader::placeOf(QStringView key) {
  return u"key \""_s + key.toString() + u'"';
}

std::optional<QUuid> JsonObjectReader::decodedUuid(QStringView key, const QJsonValue& value) {
  const auto uuid = uuidFromJsonText(value.toString());
  if (!uuid) fail(key, u"is not a UUID"_s);
  return uuid;
}

std::optional<QDateTime> JsonObjectReader::decodedInstant(QStringView key,
                                                          const QJsonValue& value) {
  auto instant = instantFromJsonText(value.toString());
  if (!instant) fail(key, u"is not a date of the form 2026-01-21T09:30:00Z"_s);
  return instant;
}

QJsonValue JsonObjectReader::present(QStringView key) {
  QJsonValue value = m_object.value(key);
  if (value.isUndefined()) fail(key, u"is missing"_s);
  return value;
}

QJsonValue JsonObjectReader::required(QStringView key, QJsonValue::Type type) {
  return checked(key, present(key), type);
}

QJsonValue JsonObjectReader::optional(QStringView key, QJsonValue::Type type) {
  const QJsonValue value = m_object.value(key);
  if (value.isUndefined() || value.isNull()) return QJsonValue::Undefined;
  return checked(key, value, type);
}

QJsonValue JsonObjectReader::checked(QStringView key, QJsonValue value, QJsonValue::Type type) {
  if (typeOf(value) != type) {
    fail(key, u"is "_s + typeName(typeOf(value)) + u" and not "_s + typeName(type));
  }
  return value;
}

// Qt keeps integers of 64 bits with their sign exactly and everything else as floating point.
std::optional<qint64> integerFromJson(const QJsonValue& value) {
  const qint64 number = value.toInteger(0);
  if (number == 0 && value.toInteger(1) != 0) return std::nullopt;
  return number;
}

QJsonValue jsonNumber(quint64 value) {
  constexpr auto largestInteger = static_cast<quint64>(std::numeric_limits<qint64>::max());
  if (value <= largestInteger) return static_cast<qint64>(value);
  return largenumber::toJson(value);
}

}  // namespace zarvy
