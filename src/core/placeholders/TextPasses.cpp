// The passes that take a text from elsewhere, or change one that stands in the placeholder.

#include <QHash>

#include "base/MainThread.h"
#include "base/text/CaseMapping.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/Replacement.h"
#include "platform/Pasteboard.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView variableOpeners[] = {opener::variable};

// By name in lower case; of several of one name the first in the list counts.
class VariablesByName {
 public:
  explicit VariablesByName(const QList<GlobalVariable>& variables) : m_variables(variables) {}

  [[nodiscard]] const QString* value(const QString& name) {
    if (m_positions.isEmpty()) index();
    const auto position = m_positions.constFind(lowerCased(name));
    return position == m_positions.constEnd() ? nullptr : &m_variables.at(*position).value;
  }

 private:
  void index() {
    for (qsizetype position = m_variables.size() - 1; position >= 0; --position) {
      m_positions.insert(lowerCased(m_variables.at(position).name), position);
    }
  }

  const QList<GlobalVariable>& m_variables;
  QHash<QString, qsizetype> m_positions;  // made for the first question
};

constexpr QStringView letterCaseOpeners[] = {opener::uppercase, opener::lowercase,
                                             opener::titlecase};

}  // namespace

QString globalVariablesPass(const QString& text, PassContext& context) {
  VariablesByName variables(context.globalVariables);
  const auto valueOf = [&variables](const Placeholder& placeholder) {
    const QString name = placeholder.argument.toString();
    if (const QString* const value = variables.value(name)) return *value;
    return u"[#"_s + name + u"?]"_s;
  };
  return replacePlaceholders(text, {variableOpeners}, valueOf, context.limit);
}

QString clipboardPass(const QString& text, PassContext& context) {
  if (!text.contains(literal::clipboard)) return text;
  const PlaceholderServices& services = context.services;
  const auto clipboard = services.mainThread.call([&] { return services.pasteboard.text(); });
  QString result = text;
  replaceLiteral(result, literal::clipboard, clipboard.value_or(QString()), context.limit);
  return result;
}

QString letterCasePass(const QString& text, PassContext& context) {
  const auto valueOf = [](const Placeholder& placeholder) {
    const QString argument = placeholder.argument.toString();
    if (placeholder.opener == opener::uppercase) return upperCased(argument);
    if (placeholder.opener == opener::lowercase) return lowerCased(argument);
    return capitalized(argument);
  };
  return replacePlaceholders(text, {letterCaseOpeners}, valueOf, context.limit);
}

}  // namespace zarvy
