#include "storage/DocumentFile.h"

#include <QFile>
#include <QFileInfo>

#include "base/json/JsonText.h"
#include "storage/ReplaceFile.h"

namespace zarvy {

DocumentFile::DocumentFile(const DocumentKind& kind, const QString& folder, LineOutput& output)
    : m_kind(kind), m_path(folder + u'/' + kind.fileName.toString()), m_output(output) {}

bool DocumentFile::save(const QByteArray& text) const {
  const auto error = replaceFile(m_path, text);
  if (error) m_output.print(m_kind.saveFailure.toString() + *error);
  return !error;
}

std::optional<JsonResult<QJsonValue>> DocumentFile::read() const {
  if (!QFileInfo::exists(m_path)) return std::nullopt;
  QFile file(m_path);
  if (!file.open(QIODevice::ReadOnly)) return JsonError{{}, file.errorString()};
  const QByteArray text = file.readAll();
  if (file.error() != QFileDevice::NoError) return JsonError{{}, file.errorString()};
  return parseJson(text);
}

void DocumentFile::printLoadFailure(const JsonError& error) const {
  m_output.print(m_kind.loadFailure.toString() + error.description());
}

}  // namespace zarvy
