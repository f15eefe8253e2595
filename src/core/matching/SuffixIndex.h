#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QStringView>

#include "base/text/CanonicalGraphemes.h"

namespace zarvy {

// Where a snippet stands among the others of a library: of two snippets the one that comes first
// has the lower rank. Ranks need not be successive, so a snippet keeps its rank when others go.
using Rank = quint64;

// Ascending. Nearly always one: that of the only snippet with a trigger. No QVarLengthArray: that
// of Qt 6.4 loses memory where one that has grown is moved onto another.
using Ranks = std::vector<Rank>;

void insertRank(Ranks& ranks, Rank rank);
void removeRank(Ranks& ranks, Rank rank);

// Literal triggers, arranged so that the one that ends a text is found without a walk over the
// library: a radix tree over the characters of the triggers, last character first. Finding is for
// any number of threads at a time, while none adds or removes.
//
// A text ends with a trigger where their last user-perceived characters are the same one by one,
// under canonical equivalence and with case. Triggers of fewer than two characters are left out.
class SuffixIndex {
 public:
  void add(QStringView trigger, Rank rank);
  // Must have been added.
  void remove(QStringView trigger, Rank rank);

  // The lowest rank whose trigger ends `text`.
  [[nodiscard]] std::optional<Rank> find(QStringView text) const;

  // Of the tree: what the index takes of the memory.
  [[nodiscard]] std::size_t nodeCount() const { return m_nodes.size() - m_unused.size(); }

 private:
  using Number = CanonicalGraphemes::Number;
  using Numbers = std::u32string;  // the characters of a trigger, last one first

  struct Child {
    Number first = 0;  // of its label; here so that a look through many children is quick
    std::size_t node = 0;
  };
  struct Node {
    Numbers label;                // what leads here from the parent
    std::vector<Child> children;  // ascending by their first character
    Ranks ranks;                  // of the triggers that end here
  };

  [[nodiscard]] Numbers numbersOf(QStringView trigger);
  [[nodiscard]] std::size_t makeNode(std::u32string_view label);
  void split(std::size_t node, std::size_t depth);
  void removeEmptyNodes(const std::vector<std::size_t>& path);
  [[nodiscard]] static std::vector<Child>::const_iterator placeOf(
      const std::vector<Child>& children, Number first);
  [[nodiscard]] static std::optional<std::size_t> childOf(const Node& node, Number first);

  CanonicalGraphemes m_graphemes;
  std::vector<Node> m_nodes{1};       // the root first, which has no label
  std::vector<std::size_t> m_unused;  // places in m_nodes
};

}  // namespace zarvy
