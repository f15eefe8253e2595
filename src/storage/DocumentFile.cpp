#include "storage/DocumentFile.h"

#include <QFile>
#include <QFileInfo>

#include "base/json/JsonText.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

DocumentFile::DocumentFile(const DocumentKind& kind, const QString& folder, LineOutput& output)
    : m_kind(kind), m_path(folder + u'/' + kind.fileName.toString()), m_output(output) {}

bool DocumentFile::save(const QByteArray& text) const {
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
}

}  // namespace zarvy
