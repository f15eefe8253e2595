#pragma once

#include <optional>
#include <vector>

#include <QHash>
#include <QList>

#include "core/matching/SuffixIndex.h"
#include "core/model/Snippet.h"

namespace zarvy {

// A library together with what matching and nested snippets need of it. Immutable; any thread.
class TriggerLibrary {
 public:
  // UTF-16 units. Compiling a longer expression would hold up a key, and nothing can stop it.
  static constexpr qsizetype longestPattern = 10'000;

  TriggerLibrary() = default;
  explicit TriggerLibrary(const QList<Snippet>& snippets)
      : m_snippets(snippets), m_literals(snippets) {
    m_positions.reserve(snippets.size());
    for (qsizetype position = 0; position < snippets.size(); ++position) {
      const Snippet& snippet = snippets.at(position);
      if (snippet.isRegexTrigger) {
        const bool isTooLong = snippet.trigger.size() > longestPattern;
        (isTooLong ? m_tooLongPatterns : m_regexPositions).push_back(position);
      }
      if (!m_positions.contains(snippet.trigger)) m_positions.insert(snippet.trigger, position);
    }
  }

  [[nodiscard]] const QList<Snippet>& snippets() const { return m_snippets; }
  [[nodiscard]] const SuffixIndex& literals() const { return m_literals; }

  // Where the snippets with a regular expression stand, in order, but for the too long ones.
  [[nodiscard]] const std::vector<qsizetype>& regexPositions() const { return m_regexPositions; }

  // Where those with an expression above longestPattern stand, in order: they never match.
  [[nodiscard]] const std::vector<qsizetype>& tooLongPatterns() const { return m_tooLongPatterns; }

  // The replacement of the first snippet with exactly this trigger, be it literal or an expression.
  [[nodiscard]] std::optional<QString> replacementOf(const QString& trigger) const {
    const auto position = m_positions.constFind(trigger);
    if (position == m_positions.constEnd()) return std::nullopt;
    return m_snippets.at(*position).replacement;
  }

 private:
  QList<Snippet> m_snippets;
  SuffixIndex m_literals;
  std::vector<qsizetype> m_regexPositions;
  std::vector<qsizetype> m_tooLongPatterns;
  QHash<QString, qsizetype> m_positions;  // by trigger
};

}  // namespace zarvy
