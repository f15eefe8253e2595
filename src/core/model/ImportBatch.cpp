#include "core/model/ImportBatch.h"

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple importBatchFields{
    jsonField(u"id", &ImportBatch::id),
    jsonField(u"timestamp", &ImportBatch::timestamp),
    jsonField(u"sourceFile", &ImportBatch::sourceFile),
    jsonField(u"snippetIDs", &ImportBatch::snippetIDs),
};

}  // namespace

JsonResult<ImportBatch> ImportBatch::fromJson(const QJsonValue& value) {
  return recordFromJson<ImportBatch>(value, importBatchFields);
}

QJsonObject ImportBatch::toJson() const {
  return recordToJson(*this, importBatchFields);
}

}  // namespace zarvy
