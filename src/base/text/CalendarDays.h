#pragma once

#include <memory>

#include <QDateTime>
#include <QString>

namespace zarvy {

// The days of a time zone and the place of an instant in them. A day need not begin at midnight
// nor have 24 hours: daylight saving time begins and ends at any hour, in some zones at midnight.
//
// One thread at a time. Making one takes microseconds; an instant of the day asked for last costs
// next to nothing, so that a list of instants in order is cheap.
class CalendarDays {
 public:
  // `timeZone` as the tz database names it, such as "Europe/Berlin". A name that ICU does not know
  // stands for UTC, an empty one for the machine's time zone at the start of the program.
  explicit CalendarDays(const QString& timeZone);

  // In the time zone that the machine has now.
  [[nodiscard]] static CalendarDays current();

  // The first instant of the day of `instant`, in UTC.
  [[nodiscard]] QDateTime startOfDay(const QDateTime& instant);

  // The first instant of the day that is `days` days after that of `instant`, in UTC. A day that
  // the zone left out, as some did when they changed sides of the date line, does not count.
  [[nodiscard]] QDateTime startOfDay(const QDateTime& instant, int days);

  // 0 to 23.
  [[nodiscard]] int hour(const QDateTime& instant);

  // 1 for Sunday to 7 for Saturday.
  [[nodiscard]] int weekday(const QDateTime& instant);

 private:
  using Handle = void*;  // what ICU's UCalendar is
  struct Close {
    void operator()(Handle* calendar) const;
  };

  void moveTo(const QDateTime& instant);
  [[nodiscard]] QDateTime startOfDayAfter(int days);

  std::unique_ptr<Handle, Close> m_calendar;
  QDateTime m_dayStart;  // of the day asked for last
  QDateTime m_dayEnd;
};

}  // namespace zarvy
