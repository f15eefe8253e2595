#pragma once

#include <QDateTime>

#include "base/zone/SystemLocalTime.h"

namespace zarvy {

// The days by the machine's clocks, and the place of an instant in them. A day need not begin at
// midnight nor have 24 hours: daylight saving time begins and ends at any hour, in some zones at
// midnight.
//
// One thread at a time. Making one takes microseconds; an instant of the day asked for last costs
// next to nothing, so that a list of instants in order is cheap.
class CalendarDays {
 public:
  // In the time zone that the machine has now.
  CalendarDays() = default;

  // The first instant of the day of `instant`, in UTC.
  [[nodiscard]] QDateTime startOfDay(const QDateTime& instant);

  // The first instant of the day that is `days` days after that of `instant`, in UTC. A day that
  // the zone left out, as some did when they changed sides of the date line, does not count.
  [[nodiscard]] QDateTime startOfDay(const QDateTime& instant, int days) const;

  // 0 to 23.
  [[nodiscard]] int hour(const QDateTime& instant) const;

  // 1 for Sunday to 7 for Saturday.
  [[nodiscard]] int weekday(const QDateTime& instant) const;

 private:
  // What the clocks show, counted in seconds from 1970 on.
  [[nodiscard]] qint64 shownAt(const QDateTime& instant) const;
  // Days are counted from 1 January 1970 on.
  [[nodiscard]] qint64 dayOf(const QDateTime& instant) const;
  [[nodiscard]] QDateTime startOf(qint64 day) const;

  SystemLocalTime m_time;
  QDateTime m_dayStart;  // of the day asked for last
  QDateTime m_dayEnd;
};

}  // namespace zarvy
