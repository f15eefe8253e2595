#include "storage/DocumentFile.h"

#include <QDateTime>
#include <QFileInfo>

#include "base/json/JsonText.h"
#include "storage/DocumentBackups.h"
#include "storage/PrivateFolder.h"
#include "storage/ReadFile.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

DocumentFile::DocumentFile(const DocumentKind& kind, const QString& folder, LineOutput& output,
                           DocumentBackups* backups)
    : m_kind(kind),
      m_folder(folder),
      m_path(folder + u'/' + kind.fileName.toString()),
      m_output(output),
      m_backups(backups) {}

namespace {

QString foreignFolder() {
  return u"Its folder belongs to another user"_s;
}

}  // namespace

bool DocumentFile::isInForeignFolder() const {
  return m_backups && belongsToAnother(m_folder);
}

bool DocumentFile::save(const QByteArray& text) const {
  if (isInForeignFolder()) {
    m_output.print(m_kind.saveFailure.toString() + foreignFolder());
    return false;
  }
  if (m_backups) m_backups->beforeWrite(m_folder, QDateTime::currentDateTimeUtc());
  const auto error = replaceFile(m_path, text);
  if (error) m_output.print(m_kind.saveFailure.toString() + *error);
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
  m_output.print(m_kind.loadFailure.toString() + error.description());
  if (m_backups && !isInForeignFolder()) m_backups->foundUnreadable();
}

}  // namespace zarvy
