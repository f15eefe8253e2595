#include "core/evaluation/Evaluator.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/Replacement.h"

namespace zarvy {
namespace {

constexpr QStringView scriptOpeners[] = {u"{{js:"};

}  // namespace

QString javaScriptPass(const QString& text, PassContext& context) {
  const auto valueOf = [&javaScript = context.services.javaScript](const Placeholder& placeholder) {
    return javaScript.evaluate(placeholder.argument.toString());
  };
  return replacePlaceholders(text, {scriptOpeners}, valueOf, context.limit);
}

}  // namespace zarvy
