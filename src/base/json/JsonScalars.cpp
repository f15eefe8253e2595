#include "base/json/JsonScalars.h"

#include <algorithm>
#include <chrono>

#include "base/UtcZone.h"

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

// Whole seconds since 1970. The nearest that the form can say; the beginning for a date that is
// none.
std::chrono::sys_seconds writable(const QDateTime& instant) {
  using std::chrono::sys_seconds;
  constexpr sys_seconds first = std::chrono::sys_days(std::chrono::year(1) / 1 / 1);
  constexpr sys_seconds end = std::chrono::sys_days(std::chrono::year(10000) / 1 / 1);
  if (!instant.isValid()) return {};
  const std::chrono::milliseconds exact(instant.toMSecsSinceEpoch());
  const sys_seconds whole(std::chrono::floor<std::chrono::seconds>(exact));
  return std::clamp(whole, first, end - std::chrono::seconds(1));
}

// A number with leading zeros at the place that a table of dates gives it.
struct Digits {
  qsizetype start;
  qsizetype count;

  void write(QString& text, int number) const {
    for (qsizetype position = start + count; position-- > start; number /= 10) {
      text[position] = QChar(u'0' + number % 10);
    }
  }

  [[nodiscard]] int read(QStringView text) const {
    int number = 0;
    for (const QChar digit : text.sliced(start, count)) number = 10 * number + digit.digitValue();
    return number;
  }
};

constexpr QStringView dateShape = u"xxxx-xx-xxTxx:xx:xxZ";
constexpr Digits yearDigits{0, 4};
constexpr Digits monthDigits{5, 2};
constexpr Digits dayDigits{8, 2};
constexpr Digits hourDigits{11, 2};
constexpr Digits minuteDigits{14, 2};
constexpr Digits secondDigits{17, 2};

}  // namespace

QString jsonText(const QUuid& uuid) {
  QString text = uuid.toString(QUuid::WithoutBraces);
  for (QChar& character : text) {
    if (character >= u'a') character = QChar(character.unicode() - u'a' + u'A');
  }
  return text;
}

// By hand, here and in reading: documents hold tens of thousands of dates, and QDateTime's own way
// takes microseconds for each.
QString jsonText(const QDateTime& instant) {
  const std::chrono::sys_seconds seconds = writable(instant);
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(seconds - day);
  QString text = dateShape.toString();
  yearDigits.write(text, static_cast<int>(date.year()));
  monthDigits.write(text, static_cast<int>(static_cast<unsigned>(date.month())));
  dayDigits.write(text, static_cast<int>(static_cast<unsigned>(date.day())));
  hourDigits.write(text, static_cast<int>(time.hours().count()));
  minuteDigits.write(text, static_cast<int>(time.minutes().count()));
  secondDigits.write(text, static_cast<int>(time.seconds().count()));
  return text;
}

std::optional<QUuid> uuidFromJsonText(QStringView text) {
  if (!hasShape(text, u"xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx", isHexDigit)) return std::nullopt;
  return QUuid::fromString(text);
}

std::optional<QDateTime> instantFromJsonText(QStringView text) {
  if (!hasShape(text, dateShape, isDigit)) return std::nullopt;
  const QDate date(yearDigits.read(text), monthDigits.read(text), dayDigits.read(text));
  const QTime time(hourDigits.read(text), minuteDigits.read(text), secondDigits.read(text));
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  return QDateTime(date, time, utcZone);
}

}  // namespace zarvy
