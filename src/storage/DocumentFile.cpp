#include "storage/DocumentFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonObject>

#include "base/json/JsonObjectReader.h"
#include "base/json/JsonText.h"
#include "storage/DocumentBackups.h"
#include "storage/PrivateFolder.h"
#include "storage/ReadFile.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QString foreignFolder() {
  return u"Its folder belongs to another user"_s;
}

std::optional<QString> textFromJson(const QJsonValue& value) {
  if (!value.isString()) return std::nullopt;
  return value.toString();
}

// `decode` gives the value of one member; absent where that is of another kind.
template <typename Value>
JsonResult<QMap<QString, Value>> mapFromJson(const QJsonValue& value,
                                             std::optional<Value> (*decode)(const QJsonValue&),
                                             const QString& kind) {
  if (!value.isObject()) return JsonError{{}, u"is not an object"_s};
  const QJsonObject object = value.toObject();
  QMap<QString, Value> map;
  for (auto member = object.begin(); member != object.end(); ++member) {
    const std::optional<Value> decoded = decode(member.value());
    if (!decoded) return JsonError{u"member %1"_s.arg(map.size()), u"is not "_s + kind};
    map.insert(member.key(), *decoded);
  }
  return map;
}

template <typename Value>
QByteArray objectToJson(const QMap<QString, Value>& map) {
  QJsonObject object;
  for (auto member = map.begin(); member != map.end(); ++member) {
    // Qt 6.8 reads through the null pointer of a null key.
    object.insert(member.key().isNull() ? u""_s : member.key(), member.value());
  }
  return writeJson(object);
}

}  // namespace

DocumentFile::DocumentFile(const DocumentKind& kind, const QString& folder, LineOutput& output,
                           DocumentBackups* backups)
    : m_kind(kind),
      m_folder(folder),
      m_path(folder + u'/' + kind.fileName.toString()),
      m_output(output),
      m_backups(backups) {}

bool DocumentFile::isInForeignFolder() const {
  return m_backups && belongsToAnother(m_folder);
}

bool DocumentFile::save(const QByteArray& text) const {
  if (isInForeignFolder()) {
    m_output.print(m_kind.saveFailure + foreignFolder());
    return false;
  }
  if (m_backups) m_backups->beforeWrite(m_folder, QDateTime::currentDateTimeUtc());
  const auto error = replaceFile(m_path, text);
  if (error) m_output.print(m_kind.saveFailure + *error);
  return !error;
}

std::optional<JsonResult<QJsonValue>> DocumentFile::read() const {
  if (!QFileInfo::exists(m_path)) return std::nullopt;
  if (isInForeignFolder()) return JsonError{{}, foreignFolder()};
  if (m_backups && belongsToAnother(m_path)) return JsonError{{}, u"It belongs to another user"_s};
  const JsonResult<QByteArray> text = readFile(m_path);
  if (!text) return text.error();
  return parseJson(text.value());
}

void DocumentFile::printLoadFailure(const JsonError& error) const {
  m_output.print(m_kind.loadFailure + error.description());
  if (m_backups && !isInForeignFolder()) m_backups->foundUnreadable();
}

JsonResult<QMap<QString, qint64>> integersFromJson(const QJsonValue& value) {
  return mapFromJson<qint64>(value, integerFromJson, u"a whole number of 64 bits"_s);
}

JsonResult<QMap<QString, QString>> textsFromJson(const QJsonValue& value) {
  return mapFromJson<QString>(value, textFromJson, u"a string"_s);
}

QByteArray mapToJson(const QMap<QString, qint64>& map) {
  return objectToJson(map);
}

QByteArray mapToJson(const QMap<QString, QString>& map) {
  return objectToJson(map);
}

}  // namespace zarvy
