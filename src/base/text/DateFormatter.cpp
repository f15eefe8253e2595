#include "base/text/DateFormatter.h"

#include <unicode/udat.h>

namespace zarvy {
namespace {

UDateFormatStyle icuStyle(DateStyle style) {
  switch (style) {
    case DateStyle::none:
      return UDAT_NONE;
    case DateStyle::shortStyle:
      return UDAT_SHORT;
    case DateStyle::mediumStyle:
      return UDAT_MEDIUM;
    case DateStyle::longStyle:
      return UDAT_LONG;
  }
  return UDAT_NONE;
}

UDateFormat* open(UDateFormatStyle time, UDateFormatStyle date, QStringView pattern,
                  const RegionalSettings& region) {
  const QStringView zone = region.timeZone;
  UErrorCode status = U_ZERO_ERROR;
  UDateFormat* const format =
      udat_open(time, date, region.locale.constData(), zone.isEmpty() ? nullptr : zone.utf16(),
                static_cast<int32_t>(zone.size()), pattern.isEmpty() ? u"" : pattern.utf16(),
                static_cast<int32_t>(pattern.size()), &status);
  return U_SUCCESS(status) ? format : nullptr;
}

}  // namespace

void DateFormatter::Close::operator()(Handle* format) const {
  udat_close(format);
}

DateFormatter::DateFormatter(DateStyle date, DateStyle time, const RegionalSettings& region)
    : m_format(open(icuStyle(time), icuStyle(date), {}, region)) {}

DateFormatter::DateFormatter(const QString& pattern, const RegionalSettings& region)
    : m_format(open(UDAT_PATTERN, UDAT_PATTERN, pattern, region)) {}

DateFormatter::~DateFormatter() = default;

QString DateFormatter::format(const QDateTime& date) const {
  if (!m_format) return {};
  const auto milliseconds = static_cast<UDate>(date.toMSecsSinceEpoch());
  const std::scoped_lock guard(m_lock);
  QString text(64, Qt::Uninitialized);
  const auto write = [&](UErrorCode& status) {
    return udat_format(m_format.get(), milliseconds, reinterpret_cast<char16_t*>(text.data()),
                       static_cast<int32_t>(text.size()), nullptr, &status);
  };
  UErrorCode status = U_ZERO_ERROR;
  int32_t length = write(status);
  if (status == U_BUFFER_OVERFLOW_ERROR) {
    text.resize(length);
    status = U_ZERO_ERROR;
    length = write(status);
  }
  if (U_FAILURE(status)) return {};
  text.truncate(length);
  return text;
}

}  // namespace zarvy
