#include "core/placeholders/Captures.h"

#include "base/text/Regex.h"
#include "core/placeholders/Replacement.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QStringList scanGroupNames(const QString& pattern) {
  const Regex::Compilation compilation =
      Regex::compile(u"\\(\\?[<']([a-zA-Z_][a-zA-Z0-9_]*)[>']"_s);
  const auto* const declaration = std::get_if<std::shared_ptr<const Regex>>(&compilation);
  if (!declaration) return {};
  QStringList names;
  for (const RegexMatch& match : (*declaration)->allMatches(pattern)) {
    if (const auto name = match.groups.at(1)) {
      names.append(pattern.sliced(name->start, name->length));
    }
  }
  return names;
}

QString applyCaptures(const QString& text, const QMap<QString, QString>& captures) {
  ExpansionLimit limit;
  QString result = text;
  for (auto capture = captures.cbegin(); capture != captures.cend(); ++capture) {
    replaceLiteral(result, u"{{"_s + capture.key() + u"}}"_s, capture.value(), limit);
  }
  return result;
}

}  // namespace zarvy
