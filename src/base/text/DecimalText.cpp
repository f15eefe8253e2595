#include "base/text/DecimalText.h"

#include <unicode/uchar.h>

#include "base/text/CodePoints.h"

namespace zarvy {

qsizetype leadingDigits(QStringView text) {
  qsizetype position = 0;
  while (position < text.size()) {
    const char32_t codePoint = codePointAt(text, position);
    if (u_isdigit(static_cast<UChar32>(codePoint)) == 0) break;
    position += lengthOf(codePoint);
  }
  return position;
}

std::optional<qint64> readInteger(QStringView text) {
  const bool isNegative = text.startsWith(u'-');
  if (isNegative || text.startsWith(u'+')) text = text.sliced(1);
  if (text.isEmpty() || leadingDigits(text) != text.size()) return std::nullopt;
  // Summed up below zero, where there is room for one number more.
  qint64 negated = 0;
  for (qsizetype position = 0; position < text.size();) {
    const char32_t codePoint = codePointAt(text, position);
    const qint64 digit = u_charDigitValue(static_cast<UChar32>(codePoint));
    if (__builtin_mul_overflow(negated, qint64{10}, &negated)) return std::nullopt;
    if (__builtin_sub_overflow(negated, digit, &negated)) return std::nullopt;
    position += lengthOf(codePoint);
  }
  if (isNegative) return negated;
  qint64 number = 0;
  if (__builtin_sub_overflow(qint64{0}, negated, &number)) return std::nullopt;
  return number;
}

}  // namespace zarvy
