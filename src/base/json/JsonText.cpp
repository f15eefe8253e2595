#include "base/json/JsonText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "base/json/JsonWriter.h"
#include "base/json/LargeNumber.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

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
  const QByteArray marked = largenumber::marked(text);
  if (marked.size() != text.size()) document = QJsonDocument::fromJson(marked);
  if (document.isArray()) return QJsonValue(document.array());
  return QJsonValue(document.object());
}

}  // namespace zarvy
