#pragma once

#include <vector>

#include <QList>

#include "core/matching/SuffixIndex.h"
#include "core/model/Snippet.h"

namespace zarvy {

// A library together with what matching needs of it. Immutable; any thread.
class TriggerLibrary {
 public:
  TriggerLibrary() = default;
  explicit TriggerLibrary(const QList<Snippet>& snippets)
      : m_snippets(snippets), m_literals(snippets) {
    for (qsizetype position = 0; position < snippets.size(); ++position) {
      if (snippets.at(position).isRegexTrigger) m_regexPositions.push_back(position);
    }
  }

  [[nodiscard]] const QList<Snippet>& snippets() const { return m_snippets; }
  [[nodiscard]] const SuffixIndex& literals() const { return m_literals; }

  // Where the snippets with a regular expression stand, in order.
  [[nodiscard]] const std::vector<qsizetype>& regexPositions() const { return m_regexPositions; }

 private:
  QList<Snippet> m_snippets;
  SuffixIndex m_literals;
  std::vector<qsizetype> m_regexPositions;
};

}  // namespace zarvy
