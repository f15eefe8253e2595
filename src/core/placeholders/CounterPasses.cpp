#include "base/text/DecimalText.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/PlaceholderServices.h"
#include "core/placeholders/Replacement.h"

namespace zarvy {
namespace {

constexpr QStringView counterOpeners[] = {opener::counter};

// What stands before and behind the only colon; no name is empty.
struct NameAndRest {
  QString name;
  QStringView rest;
};

NameAndRest split(QStringView argument) {
  const qsizetype colon = argument.indexOf(u':');
  return {argument.first(colon).toString(), argument.sliced(colon + 1)};
}

bool isPlain(QStringView argument) {
  return !argument.contains(u':');
}

bool hasStart(QStringView argument) {
  const qsizetype colon = argument.indexOf(u':');
  if (colon < 1 || colon + 1 == argument.size()) return false;
  const QStringView start = argument.sliced(colon + 1);
  return leadingDigits(start) == start.size();
}

bool hasReset(QStringView argument) {
  const qsizetype colon = argument.indexOf(u':');
  return colon >= 1 && argument.sliced(colon + 1) == u"reset";
}

}  // namespace

QString countersPass(const QString& text, PassContext& context) {
  const auto valueOf = [&counters = context.services.counters](const Placeholder& placeholder) {
    return QString::number(counters.nextValue(placeholder.argument.toString(), 1));
  };
  return replacePlaceholders(text, {counterOpeners, isPlain}, valueOf, context.limit);
}

QString startedCountersPass(const QString& text, PassContext& context) {
  const auto valueOf = [&counters = context.services.counters](const Placeholder& placeholder) {
    const NameAndRest parts = split(placeholder.argument);
    return QString::number(counters.nextValue(parts.name, readInteger(parts.rest).value_or(1)));
  };
  return replacePlaceholders(text, {counterOpeners, hasStart}, valueOf, context.limit);
}

QString resetCountersPass(const QString& text, PassContext& context) {
  const auto valueOf = [&counters = context.services.counters](const Placeholder& placeholder) {
    const NameAndRest parts = split(placeholder.argument);
    counters.resetCounter(parts.name);
    return QString::number(counters.nextValue(parts.name, 1));
  };
  return replacePlaceholders(text, {counterOpeners, hasReset}, valueOf, context.limit);
}

}  // namespace zarvy
