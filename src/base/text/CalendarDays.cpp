#include "base/text/CalendarDays.h"

#include <algorithm>
#include <cmath>

#include "base/UtcZone.h"

namespace zarvy {
namespace {

constexpr qint64 secondsInAnHour = 3600;
constexpr qint64 secondsInADay = 24 * secondsInAnHour;

qint64 dividedDown(qint64 number, qint64 divisor) {
  const qint64 rest = number % divisor;
  return number / divisor - (rest < 0 ? 1 : 0);
}

qint64 restOf(qint64 number, qint64 divisor) {
  return number - dividedDown(number, divisor) * divisor;
}

qint64 secondsOf(const QDateTime& instant) {
  return dividedDown(instant.toMSecsSinceEpoch(), 1000);
}

// The first instant from which on the offset is that of `end`, where it changes once on the way.
qint64 changeBetween(const LocalTime& time, qint64 begin, qint64 end) {
  const qint32 latter = time.offsetAt(end);
  while (end - begin > 1) {
    const qint64 middle = begin + (end - begin) / 2;
    (time.offsetAt(middle) == latter ? end : begin) = middle;
  }
  return end;
}

}  // namespace

QDateTime CalendarDays::startOfDay(const QDateTime& instant) {
  if (!m_dayStart.isValid() || instant < m_dayStart || instant >= m_dayEnd) {
    const qint64 day = dayOf(instant);
    m_dayStart = startOf(day);
    m_dayEnd = startOf(day + 1);
  }
  return m_dayStart;
}

// A zone that has changed sides of the date line on the way is about a day ahead or behind there.
QDateTime CalendarDays::startOfDay(const QDateTime& instant, int days) const {
  qint64 day = dayOf(instant) + days;
  const double ahead =
      m_time.offsetAt(secondsOf(instant)) - m_time.offsetAt(secondsOf(startOf(day)));
  day -= std::lround(ahead / static_cast<double>(secondsInADay));
  const bool isLeftOut = startOf(day) == startOf(day + 1);
  if (isLeftOut) day += days < 0 ? -1 : 1;
  return startOf(day);
}

int CalendarDays::hour(const QDateTime& instant) const {
  return static_cast<int>(restOf(shownAt(instant), secondsInADay) / secondsInAnHour);
}

int CalendarDays::weekday(const QDateTime& instant) const {
  constexpr qint64 weekdayOfTheFirst = 4;  // a Thursday, counted from Sunday on
  return static_cast<int>(restOf(dayOf(instant) + weekdayOfTheFirst, 7)) + 1;
}

qint64 CalendarDays::shownAt(const QDateTime& instant) const {
  const qint64 seconds = secondsOf(instant);
  return seconds + m_time.offsetAt(seconds);
}

qint64 CalendarDays::dayOf(const QDateTime& instant) const {
  return dividedDown(shownAt(instant), secondsInADay);
}

QDateTime CalendarDays::startOf(qint64 day) const {
  const qint64 midnight = day * secondsInADay;  // as the clocks show it
  // No place is further from Greenwich than a day, and none moves its clocks twice in two.
  const qint64 begin = midnight - secondsInADay;
  const qint64 end = midnight + secondsInADay;
  const qint64 byFormer = midnight - m_time.offsetAt(begin);
  const qint64 byLatter = midnight - m_time.offsetAt(end);
  qint64 start = byFormer;
  if (byFormer != byLatter) {
    const qint64 change = changeBetween(m_time, begin, end);
    // A midnight that comes twice begins the day at the first time, one that is left out as soon as
    // the clocks have been moved.
    if (byFormer >= change) start = std::max(change, byLatter);
  }
  return QDateTime::fromMSecsSinceEpoch(start * 1000, utcZone);
}

}  // namespace zarvy
