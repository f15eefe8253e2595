#include "base/text/CaseMapping.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/Replacement.h"

namespace zarvy {
namespace {

constexpr QStringView upper = u"{{uppercase:";
constexpr QStringView lower = u"{{lowercase:";
constexpr QStringView letterCaseOpeners[] = {upper, lower, u"{{titlecase:"};

}  // namespace

QString letterCasePass(const QString& text, PassContext& context) {
  const auto valueOf = [](const Placeholder& placeholder) {
    const QString argument = placeholder.argument.toString();
    if (placeholder.opener == upper) return upperCased(argument);
    if (placeholder.opener == lower) return lowerCased(argument);
    return capitalized(argument);
  };
  return replacePlaceholders(text, {letterCaseOpeners}, valueOf, context.limit);
}

}  // namespace zarvy
