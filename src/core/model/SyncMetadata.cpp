#include "core/model/SyncMetadata.h"

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple syncMetadataFields{
    jsonField(u"lastSyncDate", &SyncMetadata::lastSyncDate),
    jsonField(u"deviceID", &SyncMetadata::deviceID),
    jsonField(u"dataVersion", &SyncMetadata::dataVersion),
};

}  // namespace

JsonResult<SyncMetadata> SyncMetadata::fromJson(const QJsonValue& value) {
  return recordFromJson<SyncMetadata>(value, syncMetadataFields);
}

QJsonObject SyncMetadata::toJson() const {
  return recordToJson(*this, syncMetadataFields);
}

}  // namespace zarvy
