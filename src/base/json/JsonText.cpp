#include "base/json/JsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringEncoder>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class Writer {
 public:
  QByteArray take(const QJsonValue& value) {
    writeValue(value, 0);
    return m_text;
  }

 private:
  void writeValue(const QJsonValue& value, qsizetype level) {
    switch (value.type()) {
      case QJsonValue::Bool:
        m_text += value.toBool() ? "true" : "false";
        return;
      case QJsonValue::Double:
        writeNumber(value);
        return;
      case QJsonValue::String:
        writeString(value.toString());
        return;
      case QJsonValue::Array:
        writeArray(value.toArray(), level);
        return;
      case QJsonValue::Object:
        writeObject(value.toObject(), level);
        return;
      default:
        m_text += "null";
    }
  }

  void writeArray(const QJsonArray& array, qsizetype level) {
    open('[', array.isEmpty());
    bool isFirst = true;
    for (const QJsonValue element : array) {
      beginMember(isFirst, level + 1);
      writeValue(element, level + 1);
      isFirst = false;
    }
    close(']', level);
  }

  void writeObject(const QJsonObject& object, qsizetype level) {
    open('{', object.isEmpty());
    QStringList keys = object.keys();
    std::sort(keys.begin(), keys.end());
    bool isFirst = true;
    for (const QString& key : keys) {
      beginMember(isFirst, level + 1);
      writeString(key);
      m_text += " : ";
      writeValue(object.value(key), level + 1);
      isFirst = false;
    }
    close('}', level);
  }

  void open(char bracket, bool isEmpty) {
    m_text += bracket;
    if (isEmpty) m_text += '\n';  // an empty one is its brackets with an empty line between
  }

  void beginMember(bool isFirst, qsizetype level) {
    m_text += isFirst ? "\n" : ",\n";
    m_text.append(2 * level, ' ');
  }

  void close(char bracket, qsizetype level) {
    m_text += '\n';
    m_text.append(2 * level, ' ');
    m_text += bracket;
  }

  void writeNumber(const QJsonValue& value) {
    const qint64 whole = value.toInteger(0);
    if (whole != 0 || value.toDouble() == 0.0) {
      m_text += QByteArray::number(whole);
      return;
    }
    const double number = value.toDouble();
    if (!std::isfinite(number)) {
      m_text += "null";
      return;
    }
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    m_text.append(digits.data(), end - digits.data());
  }

  void writeString(QStringView string) {
    m_text += '"';
    qsizetype plainStart = 0;
    for (qsizetype position = 0; position < string.size(); ++position) {
      if (isPair(string, position)) {
        ++position;
        continue;
      }
      const QByteArray escape = escapeOf(string[position]);
      if (escape.isEmpty()) continue;
      m_text += string.sliced(plainStart, position - plainStart).toUtf8();
      m_text += escape;
      plainStart = position + 1;
    }
    m_text += string.sliced(plainStart).toUtf8();
    m_text += '"';
  }

  static bool isPair(QStringView string, qsizetype position) {
    return string[position].isHighSurrogate() && position + 1 < string.size() &&
           string[position + 1].isLowSurrogate();
  }

  // Empty for a character that stands for itself.
  static QByteArray escapeOf(QChar character) {
    switch (character.unicode()) {
      case u'"':
        return "\\\"";
      case u'\\':
        return "\\\\";
      case u'/':
        return "\\/";
      case u'\b':
        return "\\b";
      case u'\f':
        return "\\f";
      case u'\n':
        return "\\n";
      case u'\r':
        return "\\r";
      case u'\t':
        return "\\t";
      default:
        break;
    }
    if (character >= u' ' && !character.isSurrogate()) return {};
    return "\\u" + QByteArray::number(character.unicode(), 16).rightJustified(4, '0');
  }

  QByteArray m_text;
};

}  // namespace

QByteArray writeJson(const QJsonValue& value) {
  return Writer().take(value);
}

JsonResult<QJsonValue> parseJson(const QByteArray& text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(text, &error);
  if (error.error != QJsonParseError::NoError) {
    return JsonError{u"byte "_s + QString::number(error.offset), error.errorString()};
  }
  if (document.isArray()) return QJsonValue(document.array());
  return QJsonValue(document.object());
}

}  // namespace zarvy
