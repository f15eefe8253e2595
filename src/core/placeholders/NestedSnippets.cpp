#include "core/placeholders/NestedSnippets.h"

#include <QHash>

#include "core/placeholders/Openers.h"
#include "core/placeholders/Replacement.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView snippetOpeners[] = {opener::snippet};
constexpr qsizetype greatestDepth = 10;

// What an inclusion costs besides the look at its text, in units of the limit.
constexpr qint64 costOfInclusion = 65'536;

class Expansion {
 public:
  explicit Expansion(const ReplacementOfTrigger& replacementOf) : m_replacementOf(replacementOf) {}

  QString expand(const QString& text, const QSet<QString>& visited) {
    // Nothing but `visited` decides what an inclusion gives, so that each is worked out once.
    QHash<QStringView, QString> known;
    const auto valueOf = [&](const Placeholder& placeholder) {
      auto value = known.constFind(placeholder.argument);
      if (value == known.constEnd()) {
        value = known.insert(placeholder.argument, included(placeholder, visited));
      }
      return *value;
    };
    return replacePlaceholders(text, {snippetOpeners}, valueOf, m_limit);
  }

 private:
  QString included(const Placeholder& placeholder, const QSet<QString>& visited) {
    const QString trigger = placeholder.argument.toString();
    if (visited.contains(trigger)) return u"[Circular: "_s + trigger + u"]"_s;
    if (visited.size() >= greatestDepth) return u"[Max depth exceeded]"_s;
    const std::optional<QString> replacement = m_replacementOf(trigger);
    if (!replacement) return u"[Unknown: "_s + trigger + u"]"_s;
    if (!m_limit.spend(replacement->size() + costOfInclusion)) {
      return placeholder.literal.toString();
    }
    QSet<QString> onTheWay = visited;
    onTheWay.insert(trigger);
    return expand(*replacement, onTheWay);
  }

  const ReplacementOfTrigger& m_replacementOf;
  ExpansionLimit m_limit;
};

}  // namespace

QString expandNestedSnippets(const QString& text, const QSet<QString>& visited,
                             const ReplacementOfTrigger& replacementOf) {
  if (!mayHoldPlaceholders(text)) return text;
  return Expansion(replacementOf).expand(text, visited);
}

}  // namespace zarvy
