#include "base/json/JsonScalars.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

bool isDigit(QChar character) {
  return character >= u'0' && character <= u'9';
}

bool isHexDigit(QChar character) {
  return isDigit(character) || (character >= u'a' && character <= u'f') ||
         (character >= u'A' && character <= u'F');
}

// Whether `text` is `shape` with a digit of the kind told for each 'x' of it.
bool hasShape(QStringView text, QStringView shape, bool (*isPlaceholder)(QChar)) {
  return text.size() == shape.size() &&
         std::equal(text.begin(), text.end(), shape.begin(), [&](QChar character, QChar expected) {
           return expected == u'x' ? isPlaceholder(character) : character == expected;
         });
}

QDateTime writable(const QDateTime& instant) {
  if (!instant.isValid()) return QDateTime::fromSecsSinceEpoch(0, Qt::UTC);
  const QDateTime first(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
  const QDateTime last(QDate(9999, 12, 31), QTime(23, 59, 59), Qt::UTC);
  return std::clamp(instant.toUTC(), first, last);
}

}  // namespace

QString jsonText(const QUuid& uuid) {
  return uuid.toString(QUuid::WithoutBraces).toUpper();
}

QString jsonText(const QDateTime& instant) {
  return writable(instant).toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'");
}

std::optional<QUuid> uuidFromJsonText(QStringView text) {
  if (!hasShape(text, u"xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx", isHexDigit)) return std::nullopt;
  return QUuid::fromString(text);
}

std::optional<QDateTime> instantFromJsonText(QStringView text) {
  if (!hasShape(text, u"xxxx-xx-xxTxx:xx:xxZ", isDigit)) return std::nullopt;
  const auto number = [text](qsizetype start, qsizetype length) {
    return text.sliced(start, length).toInt();
  };
  const QDate date(number(0, 4), number(5, 2), number(8, 2));
  const QTime time(number(11, 2), number(14, 2), number(17, 2));
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  return QDateTime(date, time, Qt::UTC);
}

}  // namespace zarvy
