#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include "base/json/JsonResult.h"

namespace zarvy {

// Which generation of the library a machine has, and which machine made it.
struct SyncMetadata {
  QDateTime lastSyncDate;  // UTC; when this was made
  QString deviceID;        // identity of the device that made it
  qint64 dataVersion = 1;  // generation of the data: 1 at the first upload, one more at each

  [[nodiscard]] static JsonResult<SyncMetadata> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;

  bool operator==(const SyncMetadata&) const = default;
};

}  // namespace zarvy
