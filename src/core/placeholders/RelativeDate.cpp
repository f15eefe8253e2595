#include "core/placeholders/RelativeDate.h"

#include "base/text/DecimalText.h"

namespace zarvy {

std::optional<RelativeDate> readRelativeTime(QStringView argument, QStringView units) {
  const bool hasSign = argument.startsWith(u'+') || argument.startsWith(u'-');
  const qsizetype sign = hasSign ? 1 : 0;
  const qsizetype digits = leadingDigits(argument.sliced(sign));
  const qsizetype end = sign + digits;
  if (digits == 0 || argument.size() != end + 1 || !units.contains(argument[end])) {
    return std::nullopt;
  }
  return RelativeDate{readInteger(argument.first(end)).value_or(0), argument[end].unicode(), {}};
}

std::optional<RelativeDate> readRelativeDate(QStringView argument, QStringView units) {
  const qsizetype colon = argument.indexOf(u':');
  if (colon < 0) return readRelativeTime(argument, units);
  auto date = readRelativeTime(argument.first(colon), units);
  if (!date || colon + 1 == argument.size()) return std::nullopt;
  date->format = argument.sliced(colon + 1);
  return date;
}

}  // namespace zarvy
