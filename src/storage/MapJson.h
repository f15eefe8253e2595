#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QMap>
#include <QString>

#include "base/json/JsonResult.h"

namespace zarvy {

// The documents that are one object of names and values: counters, and remembered texts. One value
// of another kind fails the whole. What goes wrong is told without the name, which is the user's.

[[nodiscard]] JsonResult<QMap<QString, qint64>> integersFromJson(const QJsonValue& value);
[[nodiscard]] JsonResult<QMap<QString, QString>> textsFromJson(const QJsonValue& value);

[[nodiscard]] QByteArray mapToJson(const QMap<QString, qint64>& map);
[[nodiscard]] QByteArray mapToJson(const QMap<QString, QString>& map);

}  // namespace zarvy
