#include "base/json/LargeNumber.h"

#include <limits>

#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace zarvy::largenumber {
namespace {

// A noncharacter, which no text may exchange.
const auto markKey = u"\uFFFF"_s;

bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

// Whether `byte` may be part of a JSON number.
bool isOfNumber(char byte) {
  return isDigit(byte) || byte == '-' || byte == '+' || byte == '.' || byte == 'e' || byte == 'E';
}

// Absent where `digits` are not just that, or the number is smaller or greater.
std::optional<quint64> largeNumber(const QByteArray& digits) {
  bool isNumber = false;
  const quint64 number = digits.toULongLong(&isNumber);
  constexpr auto largestOfQt = static_cast<quint64>(std::numeric_limits<qint64>::max());
  if (!isNumber || number <= largestOfQt) return std::nullopt;
  return number;
}

// The place behind the string that begins at `start`.
qsizetype endOfString(const QByteArray& document, qsizetype start) {
  for (qsizetype place = start + 1; place < document.size(); ++place) {
    if (document[place] == '"') return place + 1;
    if (document[place] == '\\') ++place;
  }
  return document.size();
}

qsizetype endOfNumber(const QByteArray& document, qsizetype start) {
  qsizetype place = start;
  while (place < document.size() && isOfNumber(document[place])) ++place;
  return place;
}

}  // namespace

QJsonValue toJson(quint64 number) {
  return QJsonObject{{markKey, QString::number(number)}};
}

std::optional<quint64> fromJson(const QJsonValue& value) {
  const QJsonObject object = value.toObject();
  if (object.size() != 1) return std::nullopt;
  return largeNumber(object.value(markKey).toString().toLatin1());
}

QByteArray marked(const QByteArray& document) {
  QByteArray result;
  qsizetype copied = 0;
  for (qsizetype place = 0; place < document.size();) {
    if (document[place] == '"') {
      place = endOfString(document, place);
    } else if (isOfNumber(document[place])) {
      const qsizetype start = place;
      place = endOfNumber(document, start);
      const QByteArray digits = document.sliced(start, place - start);
      if (digits.size() < 19 || !largeNumber(digits)) continue;
      result += document.sliced(copied, start - copied);
      result += "{\"" + markKey.toUtf8() + "\":\"" + digits + "\"}";
      copied = place;
    } else {
      ++place;
    }
  }
  return copied == 0 ? document : result + document.sliced(copied);
}

}  // namespace zarvy::largenumber
