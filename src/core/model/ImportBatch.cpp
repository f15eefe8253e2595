#include "core/model/ImportBatch.h"

#include <utility>

#include <QJsonArray>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonScalars.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

JsonResult<ImportBatch> ImportBatch::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  ImportBatch batch;
  batch.id = reader.uuid(u"id");
  batch.timestamp = reader.instant(u"timestamp");
  batch.sourceFile = reader.string(u"sourceFile");
  batch.snippetIDs = reader.uuids(u"snippetIDs");
  return reader.result(std::move(batch));
}

QJsonObject ImportBatch::toJson() const {
  QJsonArray ids;
  for (const QUuid& snippetID : snippetIDs) ids.append(jsonText(snippetID));
  return {{u"id"_s, jsonText(id)},
          {u"timestamp"_s, jsonText(timestamp)},
          {u"sourceFile"_s, sourceFile},
          {u"snippetIDs"_s, ids}};
}

}  // namespace zarvy
