#include "fuzz/DocumentTargets.h"

#include <QByteArray>
#include <QJsonValue>

#include "base/json/JsonText.h"
#include "core/model/ExpansionEvent.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/ImportBatch.h"
#include "core/model/Settings.h"
#include "core/model/Snippet.h"
#include "core/model/StatsSummary.h"
#include "core/model/SyncMetadata.h"
#include "storage/DocumentFile.h"
#include "storage/sync/SyncedData.h"

namespace zarvy::fuzz {
namespace {

void checkError(const JsonError& error) {
  const QString line = error.description();
  require(!line.isEmpty(), "an error says nothing");
  require(!line.contains(QLatin1Char('\n')), "an error is more than one line");
}

QJsonValue parsed(const QByteArray& text) {
  const JsonResult<QJsonValue> value = parseJson(text);
  require(value.hasValue(), "what was written cannot be read");
  return value.value();
}

// `decode` reads a document, `encode` writes what it gives.
template <typename Decode, typename Encode>
void readAs(const QJsonValue& value, Decode decode, Encode encode) {
  const auto content = decode(value);
  if (!content) return checkError(content.error());
  const QByteArray text = encode(content.value());
  const auto again = decode(parsed(text));
  require(again.hasValue(), "a document that was written is refused");
  require(encode(again.value()) == text, "a document changes when it is read and written");
}

template <typename Record>
void readAsRecord(const QJsonValue& value) {
  readAs(value, Record::fromJson, [](const Record& record) { return writeJson(record.toJson()); });
}

template <typename Record>
void readAsRecords(const QJsonValue& value) {
  readAs(value, recordsFromJson<Record>, recordsToJson<Record>);
}

}  // namespace

void readDocuments(Bytes bytes) {
  const QByteArray text(reinterpret_cast<const char*>(bytes.data()),
                        static_cast<qsizetype>(bytes.size()));
  const JsonResult<QJsonValue> value = parseJson(text);
  if (!value) return checkError(value.error());

  // Once through the parser first: of a member that stands twice in an object it does not always
  // drop one where keys are written in several ways.
  const QByteArray written = writeJson(parsed(writeJson(value.value())));
  require(writeJson(parsed(written)) == written, "a value changes when it is read and written");

  readAsRecords<Snippet>(value.value());
  readAsRecords<Folder>(value.value());
  readAsRecord<Settings>(value.value());
  readAsRecords<ImportBatch>(value.value());
  readAsRecord<SyncMetadata>(value.value());
  readAsRecords<GlobalVariable>(value.value());
  readAs(value.value(), integersFromJson,
         [](const QMap<QString, qint64>& counters) { return mapToJson(counters); });
  readAsRecords<ExpansionEvent>(value.value());
  readAsRecord<StatsSummary>(value.value());
  readAsRecord<SyncedData>(value.value());
  readAs(value.value(), textsFromJson,
         [](const QMap<QString, QString>& defaults) { return mapToJson(defaults); });
}

}  // namespace zarvy::fuzz
