#include "base/text/CalendarDays.h"

#include <QTimeZone>

#include <unicode/ucal.h>

#include "base/EndProcess.h"
#include "base/UtcZone.h"

namespace zarvy {
namespace {

// None of the calls on an open calendar fails, short of a lack of memory.
void check(UErrorCode status) {
  if (U_FAILURE(status)) endProcess("ICU has no calendar.");
}

int fieldOf(const UCalendar* calendar, UCalendarDateFields field) {
  UErrorCode status = U_ZERO_ERROR;
  const int value = ucal_get(calendar, field, &status);
  check(status);
  return value;
}

}  // namespace

void CalendarDays::Close::operator()(Handle* calendar) const {
  ucal_close(calendar);
}

CalendarDays::CalendarDays(const QString& timeZone) {
  UErrorCode status = U_ZERO_ERROR;
  // Days, hours and weekdays are the same in every calendar that ICU has.
  m_calendar.reset(ucal_open(timeZone.isEmpty() ? nullptr : QStringView(timeZone).utf16(), -1,
                             "en_US", UCAL_GREGORIAN, &status));
  check(status);
  // A midnight that comes twice begins the day at the first time, one that is left out as soon as
  // the clocks have been moved.
  ucal_setAttribute(m_calendar.get(), UCAL_REPEATED_WALL_TIME, UCAL_WALLTIME_FIRST);
  ucal_setAttribute(m_calendar.get(), UCAL_SKIPPED_WALL_TIME, UCAL_WALLTIME_NEXT_VALID);
}

CalendarDays CalendarDays::current() {
  // ICU looks once in the life of the process, Qt each time.
  return CalendarDays(QString::fromUtf8(QTimeZone::systemTimeZoneId()));
}

QDateTime CalendarDays::startOfDay(const QDateTime& instant) {
  if (!m_dayStart.isValid() || instant < m_dayStart || instant >= m_dayEnd) {
    moveTo(instant);
    m_dayStart = startOfDayAfter(0);
    moveTo(instant);
    m_dayEnd = startOfDayAfter(1);
  }
  return m_dayStart;
}

QDateTime CalendarDays::startOfDay(const QDateTime& instant, int days) {
  moveTo(instant);
  return startOfDayAfter(days);
}

int CalendarDays::hour(const QDateTime& instant) {
  moveTo(instant);
  return fieldOf(m_calendar.get(), UCAL_HOUR_OF_DAY);
}

int CalendarDays::weekday(const QDateTime& instant) {
  moveTo(instant);
  return fieldOf(m_calendar.get(), UCAL_DAY_OF_WEEK);
}

void CalendarDays::moveTo(const QDateTime& instant) {
  UErrorCode status = U_ZERO_ERROR;
  ucal_setMillis(m_calendar.get(), static_cast<UDate>(instant.toMSecsSinceEpoch()), &status);
  check(status);
}

QDateTime CalendarDays::startOfDayAfter(int days) {
  UErrorCode status = U_ZERO_ERROR;
  ucal_set(m_calendar.get(), UCAL_HOUR_OF_DAY, 12);  // which no zone leaves out or repeats
  ucal_add(m_calendar.get(), UCAL_DAY_OF_MONTH, days, &status);
  ucal_set(m_calendar.get(), UCAL_HOUR_OF_DAY, 0);
  ucal_set(m_calendar.get(), UCAL_MINUTE, 0);
  ucal_set(m_calendar.get(), UCAL_SECOND, 0);
  ucal_set(m_calendar.get(), UCAL_MILLISECOND, 0);
  const UDate start = ucal_getMillis(m_calendar.get(), &status);
  check(status);
  return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(start), utcZone);
}

}  // namespace zarvy
