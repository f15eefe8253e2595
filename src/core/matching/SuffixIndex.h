#pragma once

#include <optional>
#include <vector>

#include <QList>
#include <QStringView>

#include "base/text/CanonicalGraphemes.h"
#include "core/model/Snippet.h"

namespace zarvy {

// The literal triggers of a library, arranged so that the one that ends a text is found without a
// walk over the library: a tree over the characters of the triggers, last character first, in
// which a run without a fork is a single node. Immutable once made, so any number of threads may
// search.
//
// A text ends with a trigger where their last user-perceived characters are the same one by one,
// under canonical equivalence and with case. Triggers of fewer than two characters are left out.
class SuffixIndex {
 public:
  SuffixIndex() = default;
  explicit SuffixIndex(const QList<Snippet>& snippets);

  // The lowest position in the list of a snippet whose trigger ends `text`.
  [[nodiscard]] std::optional<qsizetype> find(QStringView text) const;

 private:
  using Number = CanonicalGraphemes::Number;
  static constexpr qsizetype noPosition = -1;

  // A trigger while the tree is being built: a stretch of m_numbers.
  struct Entry {
    std::size_t begin = 0;
    std::size_t length = 0;
    qsizetype position = noPosition;
  };

  // The entries below a node; they agree in their first `depth` characters.
  struct Span {
    std::size_t first = 0;
    std::size_t last = 0;  // one behind
    std::size_t depth = 0;
  };

  struct Node {
    std::size_t labelBegin = 0;  // of m_numbers: what leads here from the parent
    std::size_t labelEnd = 0;
    std::size_t firstChild = 0;  // the children stand side by side, by their first character
    std::size_t childCount = 0;
    qsizetype position = noPosition;  // of the first snippet whose trigger ends here
  };

  [[nodiscard]] std::vector<Entry> numberTriggers(const QList<Snippet>& snippets);
  void sortEntries(std::vector<Entry>& entries) const;
  void grow(const std::vector<Entry>& entries);
  void fillNode(std::size_t index, const Span& span, const std::vector<Entry>& entries,
                std::vector<Span>& spans);
  [[nodiscard]] std::size_t commonLength(const Entry& a, const Entry& b, std::size_t from) const;
  [[nodiscard]] const Node* child(const Node& node, Number first) const;

  CanonicalGraphemes m_graphemes;
  std::vector<Number> m_numbers;  // the characters of every trigger, reversed, end to end
  std::vector<Node> m_nodes;      // the root first; empty without a trigger
  // The first character of each node's label, apart from the nodes so that looking through many
  // children touches little memory.
  std::vector<Number> m_firstCharacters;
};

}  // namespace zarvy
