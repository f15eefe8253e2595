#include "storage/sync/SyncedData.h"

#include <utility>

#include <QJsonArray>

#include "base/json/JsonObjectReader.h"
#include "storage/DocumentFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

template <typename Record>
QJsonArray arrayOf(const QList<Record>& records) {
  QJsonArray array;
  for (const Record& record : records) array.append(record.toJson());
  return array;
}

}  // namespace

JsonResult<SyncedData> SyncedData::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  SyncedData data;
  data.snippets = reader.decoded(u"snippets", recordsFromJson<Snippet>);
  data.folders = reader.decoded(u"folders", recordsFromJson<Folder>);
  data.globalVariables = reader.decoded(u"globalVariables", recordsFromJson<GlobalVariable>);
  data.metadata = reader.decoded(u"metadata", SyncMetadata::fromJson);
  return reader.result(std::move(data));
}

QJsonObject SyncedData::toJson() const {
  return {{u"snippets"_s, arrayOf(snippets)},
          {u"folders"_s, arrayOf(folders)},
          {u"globalVariables"_s, arrayOf(globalVariables)},
          {u"metadata"_s, metadata.toJson()}};
}

}  // namespace zarvy
