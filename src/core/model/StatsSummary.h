#pragma once

#include <optional>

#include <QDateTime>
#include <QJsonObject>

#include "base/json/JsonResult.h"

namespace zarvy {

// Running totals over every expansion ever recorded. A default-made record is the empty one.
struct StatsSummary {
  qint64 totalExpansions = 0;
  qint64 totalCharactersSaved = 0;
  double totalTimeSavedSeconds = 0;
  std::optional<QDateTime> firstExpansionDate;  // UTC; absent before the first expansion

  [[nodiscard]] static JsonResult<StatsSummary> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const StatsSummary&) const = default;
};

}  // namespace zarvy
