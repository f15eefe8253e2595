#include "base/text/DateFormatter.h"

#include <unicode/smpdtfmt.h>

#include "base/text/CurrentZone.h"

namespace zarvy {
namespace {

icu::DateFormat::EStyle icuStyle(DateStyle style) {
  switch (style) {
    case DateStyle::none:
      return icu::DateFormat::kNone;
    case DateStyle::shortStyle:
      return icu::DateFormat::kShort;
    case DateStyle::mediumStyle:
      return icu::DateFormat::kMedium;
    case DateStyle::longStyle:
      return icu::DateFormat::kLong;
  }
  return icu::DateFormat::kNone;
}

icu::UnicodeString icuText(const QString& text) {
  return {text.utf16(), static_cast<int32_t>(text.size())};
}

icu::Locale localeOf(const RegionalSettings& region) {
  return icu::Locale(region.locale.constData());
}

}  // namespace

struct DateFormatter::Format {
  std::unique_ptr<icu::DateFormat> icu;  // null where ICU refused it
};

DateFormatter::DateFormatter(DateStyle date, DateStyle time, const RegionalSettings& region)
    : m_format(std::make_unique<Format>()) {
  m_format->icu.reset(
      icu::DateFormat::createDateTimeInstance(icuStyle(date), icuStyle(time), localeOf(region)));
}

DateFormatter::DateFormatter(const QString& pattern, const RegionalSettings& region)
    : m_format(std::make_unique<Format>()) {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icuText(pattern), localeOf(region), status);
  if (U_SUCCESS(status)) m_format->icu = std::move(format);
}

DateFormatter::~DateFormatter() = default;

QString DateFormatter::format(const QDateTime& date) const {
  if (!m_format->icu) return {};
  const std::scoped_lock guard(m_lock);
  m_format->icu->adoptTimeZone(currentZone().release());
  icu::UnicodeString text;
  m_format->icu->format(static_cast<UDate>(date.toMSecsSinceEpoch()), text);
  return QString::fromUtf16(text.getBuffer(), text.length());
}

}  // namespace zarvy
