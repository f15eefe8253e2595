#include "base/json/JsonText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "base/json/JsonWriter.h"
#include "base/json/LargeNumber.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The parser drops U+FEFF at the start of a string, unless it is escaped. Behind a quotation mark
// that starts none it is part of a string already, or a mistake in either form.
QByteArray withEscapedStarts(QByteArray document) {
  return document.replace("\"\xEF\xBB\xBF", "\"\\ufeff");
}

}  // namespace

QByteArray writeJson(const QJsonValue& value) {
  JsonWriter writer;
  writer.writeValue(value);
  return writer.take();
}

JsonResult<QJsonValue> parseJson(const QByteArray& text) {
  QJsonParseError error;
  QJsonDocument document = QJsonDocument::fromJson(text, &error);
  if (error.error != QJsonParseError::NoError) {
    return JsonError{u"byte "_s + QString::number(error.offset), error.errorString()};
  }
  const QByteArray exact = withEscapedStarts(largenumber::marked(text));
  if (exact.size() != text.size()) document = QJsonDocument::fromJson(exact);
  if (document.isArray()) return QJsonValue(document.array());
  return QJsonValue(document.object());
}

}  // namespace zarvy
