#include "storage/DocumentFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include "base/json/JsonText.h"
#include "storage/DocumentBackups.h"
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

bool DocumentFile::save(const QByteArray& text) const {
  if (m_backups) m_backups->beforeWrite(m_folder, QDateTime::currentDateTimeUtc());
  const auto error = replaceFile(m_path, text);
  if (error) m_output.print(m_kind.saveFailure.toString() + *error);
  return !error;
}

std::optional<JsonResult<QJsonValue>> DocumentFile::read() const {
  const QFileInfo place(m_path);
  if (!place.exists()) return std::nullopt;
  // To open a pipe would wait for somebody who writes into it.
  if (!place.isFile() && !place.isDir()) return JsonError{{}, u"Not a regular file"_s};
  QFile file(m_path);
  if (!file.open(QIODevice::ReadOnly)) return JsonError{{}, file.errorString()};
  const QByteArray text = file.readAll();
  if (file.error() != QFileDevice::NoError) return JsonError{{}, file.errorString()};
  return parseJson(text);
}

void DocumentFile::printLoadFailure(const JsonError& error) const {
  m_output.print(m_kind.loadFailure.toString() + error.description());
  if (m_backups) m_backups->foundUnreadable();
}

}  // namespace zarvy
