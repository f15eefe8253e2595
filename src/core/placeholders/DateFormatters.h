#pragma once

#include <memory>
#include <mutex>

#include <QHash>
#include <QString>

#include "base/text/DateFormatter.h"

namespace zarvy {

// The formatters of the program, each made at its first use and kept: making one is what is
// expensive about a date. Their locale is the one given at the start, their time zone the one that
// the machine has when a date is written. Any thread.
class DateFormatters {
 public:
  explicit DateFormatters(RegionalSettings region);
  ~DateFormatters();
  DateFormatters(const DateFormatters&) = delete;
  DateFormatters& operator=(const DateFormatters&) = delete;

  [[nodiscard]] const RegionalSettings& region() const { return m_region; }

  [[nodiscard]] const DateFormatter& shortDateFormatter();
  [[nodiscard]] const DateFormatter& mediumDateFormatter();
  [[nodiscard]] const DateFormatter& longDateFormatter();
  [[nodiscard]] const DateFormatter& timeFormatter();

  // For exactly this Unicode date pattern.
  [[nodiscard]] const DateFormatter& dateFormatter(const QString& format);

 private:
  class Styled;

  const RegionalSettings m_region;
  const std::unique_ptr<Styled> m_shortDate;
  const std::unique_ptr<Styled> m_mediumDate;
  const std::unique_ptr<Styled> m_longDate;
  const std::unique_ptr<Styled> m_time;

  std::mutex m_dateFormatterCacheLock;
  // Guarded by m_dateFormatterCacheLock, by pattern; never shrinks.
  QHash<QString, std::shared_ptr<const DateFormatter>> m_dateFormatterCache;
};

}  // namespace zarvy
