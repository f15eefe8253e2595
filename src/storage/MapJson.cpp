#include "storage/MapJson.h"

#include <optional>

#include <QJsonObject>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

std::optional<QString> textFromJson(const QJsonValue& value) {
  if (!value.isString()) return std::nullopt;
  return value.toString();
}

// `decode` gives the value of one member; absent where that is of another kind.
template <typename Value>
JsonResult<QMap<QString, Value>> mapFromJson(const QJsonValue& value,
                                             std::optional<Value> (*decode)(const QJsonValue&),
                                             const QString& kind) {
  if (!value.isObject()) return JsonError{{}, u"is not an object"_s};
  const QJsonObject object = value.toObject();
  QMap<QString, Value> map;
  for (auto member = object.begin(); member != object.end(); ++member) {
    const std::optional<Value> decoded = decode(member.value());
    if (!decoded) return JsonError{u"member %1"_s.arg(map.size()), u"is not "_s + kind};
    map.insert(member.key(), *decoded);
  }
  return map;
}

template <typename Value>
QByteArray toJson(const QMap<QString, Value>& map) {
  QJsonObject object;
  for (auto member = map.begin(); member != map.end(); ++member) {
    // Qt 6.8 reads through the null pointer of a null key.
    object.insert(member.key().isNull() ? u""_s : member.key(), member.value());
  }
  return writeJson(object);
}

}  // namespace

JsonResult<QMap<QString, qint64>> integersFromJson(const QJsonValue& value) {
  return mapFromJson<qint64>(value, integerFromJson, u"a whole number of 64 bits"_s);
}

JsonResult<QMap<QString, QString>> textsFromJson(const QJsonValue& value) {
  return mapFromJson<QString>(value, textFromJson, u"a string"_s);
}

QByteArray mapToJson(const QMap<QString, qint64>& map) {
  return toJson(map);
}

QByteArray mapToJson(const QMap<QString, QString>& map) {
  return toJson(map);
}

}  // namespace zarvy
