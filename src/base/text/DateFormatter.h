#pragma once

#include <memory>
#include <mutex>

#include <QDateTime>
#include <QString>

#include "base/text/RegionalSettings.h"

namespace zarvy {

enum class DateStyle { none, shortStyle, mediumStyle, longStyle };

// Writes dates as text, at the time of day that the machine's clocks show for them. Expensive to
// make, some milliseconds at first, and cheap to use. Any thread, one at a time and the others
// wait.
class DateFormatter {
 public:
  // In the styles of the locale.
  DateFormatter(DateStyle date, DateStyle time, const RegionalSettings& region);

  // By a Unicode date pattern (Unicode Technical Standard 35). The text ends before the first
  // letter that means nothing in it.
  DateFormatter(const QString& pattern, const RegionalSettings& region);

  ~DateFormatter();
  DateFormatter(const DateFormatter&) = delete;
  DateFormatter& operator=(const DateFormatter&) = delete;

  // Empty where the pattern gives nothing.
  [[nodiscard]] QString format(const QDateTime& date) const;

 private:
  struct Format;  // ICU's

  mutable std::mutex m_lock;
  const std::unique_ptr<Format> m_format;  // guarded by m_lock
};

}  // namespace zarvy
