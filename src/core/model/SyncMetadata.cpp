#include "core/model/SyncMetadata.h"

#include <utility>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

JsonResult<SyncMetadata> SyncMetadata::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  SyncMetadata metadata;
  metadata.lastSyncDate = reader.instant(u"lastSyncDate");
  metadata.deviceID = reader.string(u"deviceID");
  metadata.dataVersion = reader.integer(u"dataVersion");
  return reader.result(std::move(metadata));
}

QJsonObject SyncMetadata::toJson() const {
  return {{u"lastSyncDate"_s, jsonText(lastSyncDate)},
          {u"deviceID"_s, deviceID},
          {u"dataVersion"_s, dataVersion}};
}

}  // namespace zarvy
