#include "base/Clock.h"
#include "base/text/CalendarArithmetic.h"
#include "core/placeholders/DateFormatters.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/RelativeDate.h"
#include "core/placeholders/Replacement.h"

namespace zarvy {
namespace {

constexpr QStringView dateOpeners[] = {opener::date};
constexpr QStringView timeOpeners[] = {opener::time};

std::optional<RelativeDate> readDate(QStringView argument) {
  return readRelativeDate(argument, u"dwmy");
}

std::optional<RelativeDate> readTime(QStringView argument) {
  return readRelativeTime(argument, u"hM");
}

CalendarUnit calendarUnit(char16_t letter) {
  switch (letter) {
    case u'M':
      return CalendarUnit::minute;
    case u'h':
      return CalendarUnit::hour;
    case u'w':
      return CalendarUnit::week;
    case u'm':
      return CalendarUnit::month;
    case u'y':
      return CalendarUnit::year;
    default:
      return CalendarUnit::day;
  }
}

// Now, where the calendar reaches no such date.
QDateTime resolve(const RelativeDate& date, const PlaceholderServices& services) {
  const QDateTime now = services.clock.now();
  return dateByAdding(calendarUnit(date.unit), date.amount, now, services.dates.region())
      .value_or(now);
}

const DateFormatter& formatterOf(const RelativeDate& date, DateFormatters& formatters) {
  if (!date.format || *date.format == u"medium") return formatters.mediumDateFormatter();
  if (*date.format == u"short") return formatters.shortDateFormatter();
  if (*date.format == u"long") return formatters.longDateFormatter();
  return formatters.dateFormatter(date.format->toString());
}

}  // namespace

QString relativeDatesPass(const QString& text, PassContext& context) {
  const PlaceholderForm form{dateOpeners,
                             [](QStringView argument) { return readDate(argument).has_value(); }};
  const auto valueOf = [&services = context.services](const Placeholder& placeholder) {
    const RelativeDate date = readDate(placeholder.argument).value_or(RelativeDate{});
    const QDateTime time = resolve(date, services);
    return formatterOf(date, services.dates).format(time);
  };
  return replacePlaceholders(text, form, valueOf, context.limit);
}

QString relativeTimesPass(const QString& text, PassContext& context) {
  const PlaceholderForm form{timeOpeners,
                             [](QStringView argument) { return readTime(argument).has_value(); }};
  const auto valueOf = [&services = context.services](const Placeholder& placeholder) {
    const RelativeDate time = readTime(placeholder.argument).value_or(RelativeDate{});
    return services.dates.timeFormatter().format(resolve(time, services));
  };
  return replacePlaceholders(text, form, valueOf, context.limit);
}

QString fixedDatesPass(const QString& text, PassContext& context) {
  context.now = context.services.clock.now();
  struct Fixed {
    QStringView literal;
    const DateFormatter& (DateFormatters::*formatter)() = nullptr;
  };
  constexpr Fixed all[] = {
      {literal::shortDate, &DateFormatters::shortDateFormatter},
      {literal::longDate, &DateFormatters::longDateFormatter},
      {literal::mediumDate, &DateFormatters::mediumDateFormatter},
      {literal::time, &DateFormatters::timeFormatter},
  };
  QString result = text;
  for (const Fixed& fixed : all) {
    if (!result.contains(fixed.literal)) continue;
    const DateFormatter& formatter = (context.services.dates.*fixed.formatter)();
    replaceLiteral(result, fixed.literal, formatter.format(context.now), context.limit);
  }
  return result;
}

QString customDatesPass(const QString& text, PassContext& context) {
  const auto valueOf = [&context](const Placeholder& placeholder) {
    const QString format = placeholder.argument.toString();
    return context.services.dates.dateFormatter(format).format(context.now);
  };
  return replacePlaceholders(text, {dateOpeners}, valueOf, context.limit);
}

}  // namespace zarvy
