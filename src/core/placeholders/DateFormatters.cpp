#include "core/placeholders/DateFormatters.h"

#include <optional>
#include <utility>

namespace zarvy {

class DateFormatters::Styled {
 public:
  Styled(DateStyle date, DateStyle time) : m_date(date), m_time(time) {}

  const DateFormatter& get(const RegionalSettings& region) {
    std::call_once(m_once, [&] { m_formatter.emplace(m_date, m_time, region); });
    return *m_formatter;
  }

 private:
  const DateStyle m_date;
  const DateStyle m_time;
  std::once_flag m_once;
  std::optional<DateFormatter> m_formatter;
};

DateFormatters::DateFormatters(RegionalSettings region)
    : m_region(std::move(region)),
      m_shortDate(std::make_unique<Styled>(DateStyle::shortStyle, DateStyle::none)),
      m_mediumDate(std::make_unique<Styled>(DateStyle::mediumStyle, DateStyle::none)),
      m_longDate(std::make_unique<Styled>(DateStyle::longStyle, DateStyle::none)),
      m_time(std::make_unique<Styled>(DateStyle::none, DateStyle::shortStyle)) {}

DateFormatters::~DateFormatters() = default;

const DateFormatter& DateFormatters::shortDateFormatter() {
  return m_shortDate->get(m_region);
}

const DateFormatter& DateFormatters::mediumDateFormatter() {
  return m_mediumDate->get(m_region);
}

const DateFormatter& DateFormatters::longDateFormatter() {
  return m_longDate->get(m_region);
}

const DateFormatter& DateFormatters::timeFormatter() {
  return m_time->get(m_region);
}

const DateFormatter& DateFormatters::dateFormatter(const QString& format) {
  const std::scoped_lock guard(m_dateFormatterCacheLock);
  std::shared_ptr<const DateFormatter>& formatter = m_dateFormatterCache[format];
  if (!formatter) formatter = std::make_shared<const DateFormatter>(format, m_region);
  return *formatter;
}

}  // namespace zarvy
