#include "ui/preview/PreviewNesting.h"

#include <algorithm>
#include <array>

#include <QHash>

#include "core/placeholders/Openers.h"
#include "ui/preview/ReplaceEach.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView openers[] = {opener::snippet};
constexpr std::size_t greatestDepth = 5;

// In UTF-16 units that are looked at; some tenth of a second of today's machines.
constexpr qint64 greatestCost = qint64{64} * 1024 * 1024;

class Nesting {
 public:
  explicit Nesting(const SnippetList& snippets) : m_snippets(snippets) {}

  QString resolved(const QString& text, std::size_t depth) {
    if (depth >= greatestDepth) return text;
    return replaceEach(text, {openers}, [this, depth](const Placeholder& placeholder) {
      return included(placeholder, depth);
    });
  }

 private:
  QString included(const Placeholder& placeholder, std::size_t depth) {
    const QString trigger = placeholder.argument.toString();
    const auto known = m_known.at(depth).constFind(trigger);
    QString value = known == m_known.at(depth).constEnd() ? lookedUp(trigger, depth) : *known;
    return m_limit.spend(value.size()) ? value : placeholder.literal.toString();
  }

  QString lookedUp(const QString& trigger, std::size_t depth) {
    const auto found =
        std::find_if(m_snippets.begin(), m_snippets.end(),
                     [&](const Snippet& snippet) { return snippet.trigger == trigger; });
    QString value = found == m_snippets.end() ? u"[snippet not found: "_s + trigger + u"]"_s
                                              : resolved(found->replacement, depth + 1);
    m_known.at(depth).insert(trigger, value);
    return value;
  }

  const SnippetList& m_snippets;
  // What a trigger gives at each depth: nothing else decides it, so that it is worked out once.
  std::array<QHash<QString, QString>, greatestDepth> m_known;
  ExpansionLimit m_limit{greatestCost};
};

}  // namespace

QString withNestedSnippets(const QString& text, const SnippetList& snippets) {
  return Nesting(snippets).resolved(text, 0);
}

}  // namespace zarvy
