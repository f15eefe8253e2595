#pragma once

#include <optional>

#include <QDateTime>

#include "base/text/RegionalSettings.h"

namespace zarvy {

enum class CalendarUnit { minute, hour, day, week, month, year };

// `date` and `amount` units more, in the calendar of the locale and by the machine's clocks: the
// time of day stays across a change to or from daylight saving, except for hours and minutes, which
// are lengths of time; a day that the new month has not becomes its last one. Absent where the
// calendar reaches no such date, some five million years away. UTC. Any thread.
[[nodiscard]] std::optional<QDateTime> dateByAdding(CalendarUnit unit, qint64 amount,
                                                    const QDateTime& date,
                                                    const RegionalSettings& region);

}  // namespace zarvy
