#pragma once

#include <optional>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonValue>
#include <QList>
#include <QMap>
#include <QString>

#include "base/LineOutput.h"
#include "base/json/JsonResult.h"
#include "base/json/JsonWriter.h"

namespace zarvy {

class DocumentBackups;

// What tells one document from another.
struct DocumentKind {
  QStringView fileName;
  QString loadFailure;  // the beginning of the line that a failed load prints
  QString saveFailure;
};

// One document in a folder. Same thread rules as DataStore.
class DocumentFile {
 public:
  // `backups` are those of the folder's documents, and outlive this; null where none are kept, for
  // a file that several people may share. The others are the user's own: one that belongs to
  // another user is not read, and nothing is read or written in a folder that does.
  DocumentFile(const DocumentKind& kind, const QString& folder, LineOutput& output,
               DocumentBackups* backups = nullptr);

  // The decoded document; absent if the file is missing or cannot be read. `decode` takes
  // a QJsonValue and gives a JsonResult.
  template <typename Decode>
  [[nodiscard]] auto load(Decode decode) const {
    using Value = std::remove_cvref_t<decltype(decode(QJsonValue()).value())>;
    const std::optional<JsonResult<QJsonValue>> content = read();
    if (!content) return std::optional<Value>();
    if (!content->hasValue()) return fail<Value>(content->error());
    JsonResult<Value> value = decode(content->value());
    if (!value) return fail<Value>(value.error());
    return std::optional<Value>(std::move(value).value());
  }

  // `text` is the encoded document. Whether it was saved; most callers go on in either case.
  bool save(const QByteArray& text) const;  // NOLINT(modernize-use-nodiscard)

 private:
  // Absent where there is no file.
  [[nodiscard]] std::optional<JsonResult<QJsonValue>> read() const;

  template <typename Value>
  [[nodiscard]] std::optional<Value> fail(const JsonError& error) const {
    printLoadFailure(error);
    return std::nullopt;
  }
  [[nodiscard]] bool isInForeignFolder() const;
  void printLoadFailure(const JsonError& error) const;

  DocumentKind m_kind;
  QString m_folder;
  QString m_path;
  LineOutput& m_output;
  DocumentBackups* m_backups;
};

// An array of records. One record that cannot be decoded fails the whole.
template <typename Record>
[[nodiscard]] JsonResult<QList<Record>> recordsFromJson(const QJsonValue& value) {
  if (!value.isArray()) return JsonError{{}, QStringLiteral("is not an array")};
  const QJsonArray array = value.toArray();
  QList<Record> records;
  records.reserve(array.size());
  for (qsizetype index = 0; index < array.size(); ++index) {
    JsonResult<Record> record = Record::fromJson(array.at(index));
    if (!record) return record.error().inside(QStringLiteral("element %1").arg(index));
    records.append(std::move(record).value());
  }
  return records;
}

template <typename Record>
[[nodiscard]] QByteArray recordsToJson(const QList<Record>& records) {
  JsonWriter writer;
  writer.beginArray();
  for (const Record& record : records) writer.addElement(record.toJson());
  writer.endArray();
  return writer.take();
}

// One object of names and values: counters, and remembered texts. One value of another kind fails
// the whole. What goes wrong is told without the name, which is the user's.

[[nodiscard]] JsonResult<QMap<QString, qint64>> integersFromJson(const QJsonValue& value);
[[nodiscard]] JsonResult<QMap<QString, QString>> textsFromJson(const QJsonValue& value);

[[nodiscard]] QByteArray mapToJson(const QMap<QString, qint64>& map);
[[nodiscard]] QByteArray mapToJson(const QMap<QString, QString>& map);

}  // namespace zarvy
