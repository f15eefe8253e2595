#include "base/text/Graphemes.h"
#include "core/evaluation/Evaluator.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/PlaceholderScan.h"
#include "core/placeholders/Replacement.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView scriptOpeners[] = {opener::script};
constexpr QStringView commandOpeners[] = {opener::command};

// Whether `part` of `text` begins and ends between user-perceived characters.
bool isOfWholeCharacters(QStringView text, QStringView part) {
  const qsizetype start = part.utf16() - text.utf16();
  return isGraphemeBoundary(text, start) && isGraphemeBoundary(text, start + part.size());
}

}  // namespace

QString javaScriptPass(const QString& text, PassContext& context) {
  const auto valueOf = [&javaScript = context.services.javaScript](const Placeholder& placeholder) {
    return javaScript.evaluate(placeholder.argument.toString());
  };
  return replacePlaceholders(text, {scriptOpeners}, valueOf, context.limit);
}

// Other than the other passes this one begins again at the start after each command: equal commands
// run once each, and a command may write a further one, up to the limit.
QString shellPass(const QString& text, PassContext& context) {
  QString result = text;
  while (const auto placeholder = PlaceholderScan(result, {commandOpeners}).next()) {
    const QStringView literal = placeholder->literal;
    if (!isOfWholeCharacters(result, literal) ||
        !isOfWholeCharacters(result, placeholder->argument) || !context.limit.spendCommand()) {
      break;
    }
    QString output = context.services.shell.evaluate(placeholder->argument.toString());
    const qsizetype length = result.size() - literal.size() + output.size();
    if (length > ExpansionLimit::longestText) output = u"[Shell Error]"_s;
    result.replace(literal.utf16() - QStringView(result).utf16(), literal.size(), output);
  }
  return result;
}

}  // namespace zarvy
