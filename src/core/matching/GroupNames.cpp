#include "core/matching/GroupNames.h"

#include "base/text/Regex.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QStringList scanGroupNames(const QString& pattern) {
  const Regex::Compilation compilation =
      Regex::compile(u"\\(\\?[<']([a-zA-Z_][a-zA-Z0-9_]*)[>']"_s);
  const auto* const declaration = std::get_if<std::shared_ptr<const Regex>>(&compilation);
  if (!declaration) return {};
  QStringList names;
  for (const RegexMatch& match : (*declaration)->allMatches(pattern)) {
    if (const auto name = match.groups.at(1))
      names.append(pattern.sliced(name->start, name->length));
  }
  return names;
}

}  // namespace zarvy
