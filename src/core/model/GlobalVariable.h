#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include "base/json/JsonResult.h"

namespace zarvy {

// A named value for the placeholder {{#Name}}.
struct GlobalVariable {
  QUuid id;      // identity; never changes
  QString name;  // looked up without regard to case
  QString value;
  QDateTime createdAt;   // UTC
  QDateTime modifiedAt;  // UTC

  [[nodiscard]] static JsonResult<GlobalVariable> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const GlobalVariable&) const = default;
};

[[nodiscard]] size_t qHash(const GlobalVariable& variable, size_t seed = 0) noexcept;

}  // namespace zarvy

template <>
struct std::hash<zarvy::GlobalVariable> {
  std::size_t operator()(const zarvy::GlobalVariable& variable) const noexcept {
    return qHash(variable);
  }
};
