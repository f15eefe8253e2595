#include "base/text/CalendarArithmetic.h"

#include <cmath>
#include <memory>

#include <unicode/calendar.h>

#include "base/UtcZone.h"
#include "base/text/CurrentZone.h"

namespace zarvy {
namespace {

struct UnitRule {
  UCalendarDateFields field;
  // What may be added at once. Beyond it ICU computes in integers that overflow.
  qint64 greatestAmount;
};

UnitRule ruleOf(CalendarUnit unit) {
  constexpr qint64 years = 5'000'000;
  constexpr qint64 greatestInteger = 2'147'483'647;
  switch (unit) {
    case CalendarUnit::minute:
      return {UCAL_MINUTE, greatestInteger};
    case CalendarUnit::hour:
      return {UCAL_HOUR_OF_DAY, greatestInteger};
    case CalendarUnit::day:
      return {UCAL_DAY_OF_MONTH, years * 365};
    case CalendarUnit::week:
      return {UCAL_WEEK_OF_YEAR, years * 52};
    case CalendarUnit::month:
      return {UCAL_MONTH, years * 12};
    case CalendarUnit::year:
      return {UCAL_YEAR, years};
  }
  return {UCAL_DAY_OF_MONTH, 0};
}

}  // namespace

std::optional<QDateTime> dateByAdding(CalendarUnit unit, qint64 amount, const QDateTime& date,
                                      const RegionalSettings& region) {
  const UnitRule rule = ruleOf(unit);
  if (amount > rule.greatestAmount || amount < -rule.greatestAmount) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(
      currentZone().release(), icu::Locale(region.locale.constData()), status));
  if (U_FAILURE(status)) return std::nullopt;
  calendar->setTime(static_cast<UDate>(date.toMSecsSinceEpoch()), status);
  calendar->add(rule.field, static_cast<int32_t>(amount), status);
  const UDate sum = calendar->getTime(status);
  if (U_FAILURE(status) || !std::isfinite(sum)) return std::nullopt;
  return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(sum), utcZone);
}

}  // namespace zarvy
