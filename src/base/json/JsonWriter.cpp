#include "base/json/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include <QJsonArray>
#include <QJsonObject>
#include <QVarLengthArray>

#include "base/json/LargeNumber.h"

namespace zarvy {
namespace {

// At the start of a string readers take it for a byte order mark and drop it.
constexpr QChar byteOrderMark(0xFEFF);

bool needsEscape(QChar character) {
  return character < u' ' || character == u'"' || character == u'\\' || character == u'/' ||
         character == byteOrderMark;
}

QByteArray escapeOf(QChar character) {
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
      return "\\u" + QByteArray::number(character.unicode(), 16).rightJustified(4, '0');
  }
}

bool isPair(QStringView string, qsizetype position) {
  return string[position].isHighSurrogate() && position + 1 < string.size() &&
         string[position + 1].isLowSurrogate();
}

// How many units from `start` on stand for themselves. Half of a surrogate pair does not.
qsizetype plainLength(QStringView string, qsizetype start) {
  qsizetype position = start;
  while (position < string.size()) {
    const QChar character = string[position];
    if (!character.isSurrogate()) {
      if (needsEscape(character)) break;
      ++position;
    } else {
      if (!isPair(string, position)) break;
      position += 2;
    }
  }
  return position - start;
}

}  // namespace

void JsonWriter::addElement(const QJsonValue& element) {
  beginMember(std::exchange(m_isFirstElement, false), 1);
  writeValue(element, 1);
}

void JsonWriter::endArray() {
  close(']', m_isFirstElement, 0);
}

QByteArray JsonWriter::take() {
  return std::exchange(m_text, {});
}

void JsonWriter::writeValue(const QJsonValue& value, qsizetype level) {
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
      if (const auto number = largenumber::fromJson(value)) {
        m_text += QByteArray::number(*number);
      } else {
        writeObject(value.toObject(), level);
      }
      return;
    default:
      m_text += "null";
  }
}

void JsonWriter::writeArray(const QJsonArray& array, qsizetype level) {
  m_text += '[';
  bool isFirst = true;
  for (const QJsonValue element : array) {
    beginMember(std::exchange(isFirst, false), level + 1);
    writeValue(element, level + 1);
  }
  close(']', isFirst, level);
}

void JsonWriter::writeObject(const QJsonObject& object, qsizetype level) {
  // An object that was read keeps another order than one that was put together.
  QVarLengthArray<std::pair<QString, qsizetype>, 16> keys;  // with their places in the object
  for (auto member = object.begin(); member != object.end(); ++member) {
    keys.emplace_back(member.key(), keys.size());
  }
  std::sort(keys.begin(), keys.end());

  m_text += '{';
  bool isFirst = true;
  for (const auto& [key, place] : keys) {
    beginMember(std::exchange(isFirst, false), level + 1);
    writeString(key);
    m_text += " : ";
    writeValue((object.begin() + place).value(), level + 1);
  }
  close('}', isFirst, level);
}

void JsonWriter::beginMember(bool isFirst, qsizetype level) {
  m_text += isFirst ? "\n" : ",\n";
  m_text.append(2 * level, ' ');
}

void JsonWriter::close(char bracket, bool isEmpty, qsizetype level) {
  if (isEmpty) m_text += '\n';  // an empty one is its brackets with an empty line between
  m_text += '\n';
  m_text.append(2 * level, ' ');
  m_text += bracket;
}

void JsonWriter::writeNumber(const QJsonValue& value) {
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

void JsonWriter::writeString(QStringView string) {
  m_text += '"';
  for (qsizetype position = 0; position < string.size();) {
    const qsizetype plain = plainLength(string, position);
    writePlain(string.sliced(position, plain));
    position += plain;
    if (position < string.size()) m_text += escapeOf(string[position++]);
  }
  m_text += '"';
}

void JsonWriter::writePlain(QStringView string) {
  const qsizetype start = m_text.size();
  m_text.resize(start + m_utf8.requiredSpace(string.size()));
  const char* const end = m_utf8.appendToBuffer(m_text.data() + start, string);
  m_text.truncate(end - m_text.constData());
}

}  // namespace zarvy
