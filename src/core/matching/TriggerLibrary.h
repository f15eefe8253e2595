#pragma once

#include <optional>
#include <vector>

#include <QHash>
#include <QList>

#include "core/matching/SuffixIndex.h"
#include "core/model/SnippetList.h"

namespace zarvy {

// A library together with what matching and nested snippets need of it, which follows the changes
// of the library. One thread at a time.
class TriggerLibrary {
 public:
  // UTF-16 units. Compiling a longer expression would hold up a key, and nothing can stop it.
  static constexpr qsizetype longestPattern = 10'000;

  TriggerLibrary() = default;
  explicit TriggerLibrary(const SnippetList& snippets);

  // `snippets` is the library after `change`, which led there from the one that is here. What is
  // added comes behind all others. Among 100,000 snippets one change takes some microseconds.
  void follow(const SnippetList& snippets, const ListChange& change);

  [[nodiscard]] const SnippetList& snippets() const { return m_snippets; }

  // The first snippet whose literal trigger ends `text`.
  [[nodiscard]] std::optional<Snippet> literalThatEnds(QStringView text) const;

  // The snippets with a regular expression, in order, but for those above longestPattern.
  [[nodiscard]] const QList<Snippet>& regexes() const { return m_regexes; }

  [[nodiscard]] static bool hasTooLongPattern(const Snippet& snippet) {
    return snippet.isRegexTrigger && snippet.trigger.size() > longestPattern;
  }

  // The replacement of the first snippet with exactly this trigger, be it literal or an expression.
  [[nodiscard]] std::optional<QString> replacementOf(const QString& trigger) const;

 private:
  void addLast(const Snippet& snippet);
  void add(const Snippet& snippet, Rank rank);
  void remove(const Snippet& snippet, Rank rank);
  [[nodiscard]] const Snippet& snippetOf(Rank rank) const;

  SnippetList m_snippets;
  std::vector<Rank> m_ranks;  // of m_snippets, one by one
  SuffixIndex m_literals;
  QHash<QString, Ranks> m_triggers;  // of all
  QList<Snippet> m_regexes;
  std::vector<Rank> m_regexRanks;  // of m_regexes, one by one
};

}  // namespace zarvy
