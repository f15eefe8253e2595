#include "core/matching/SuffixIndex.h"

#include <algorithm>
#include <utility>

#include "base/text/Graphemes.h"

namespace zarvy {
namespace {

constexpr std::size_t root = 0;
constexpr std::size_t shortestTrigger = 2;  // user-perceived characters

std::size_t commonLength(std::u32string_view a, std::u32string_view b) {
  const auto [end, unused] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  return static_cast<std::size_t>(end - a.begin());
}

}  // namespace

void insertRank(Ranks& ranks, Rank rank) {
  ranks.insert(std::lower_bound(ranks.cbegin(), ranks.cend(), rank), rank);
}

void removeRank(Ranks& ranks, Rank rank) {
  const auto place = std::lower_bound(ranks.cbegin(), ranks.cend(), rank);
  if (place != ranks.cend() && *place == rank) ranks.erase(place);
}

void SuffixIndex::add(QStringView trigger, Rank rank) {
  const Numbers numbers = numbersOf(trigger);
  if (numbers.size() < shortestTrigger) return;
  std::u32string_view rest = numbers;
  std::size_t node = root;
  for (;;) {
    const std::size_t common = commonLength(m_nodes[node].label, rest);
    if (common < m_nodes[node].label.size()) split(node, common);
    rest.remove_prefix(common);
    if (rest.empty()) break;
    auto child = childOf(m_nodes[node], rest.front());
    if (!child) {
      child = makeNode(rest);
      std::vector<Child>& children = m_nodes[node].children;
      children.insert(placeOf(children, rest.front()), {rest.front(), *child});
    }
    node = *child;
  }
  insertRank(m_nodes[node].ranks, rank);
}

void SuffixIndex::remove(QStringView trigger, Rank rank) {
  const Numbers numbers = numbersOf(trigger);
  if (numbers.size() < shortestTrigger) return;
  std::vector<std::size_t> path{root};
  std::u32string_view rest = numbers;
  while (!rest.empty()) {
    const auto child = childOf(m_nodes[path.back()], rest.front());
    if (!child || !rest.starts_with(m_nodes[*child].label)) return;
    rest.remove_prefix(m_nodes[*child].label.size());
    path.push_back(*child);
  }
  removeRank(m_nodes[path.back()].ranks, rank);
  removeEmptyNodes(path);
}

SuffixIndex::Numbers SuffixIndex::numbersOf(QStringView trigger) {
  Numbers numbers;
  ReverseGraphemes walk(trigger);
  for (QStringView grapheme = walk.next(); !grapheme.isEmpty(); grapheme = walk.next()) {
    numbers.push_back(m_graphemes.add(grapheme));
  }
  return numbers;
}

std::size_t SuffixIndex::makeNode(std::u32string_view label) {
  std::size_t place = m_nodes.size();
  if (m_unused.empty()) {
    m_nodes.emplace_back();
  } else {
    place = m_unused.back();
    m_unused.pop_back();
  }
  m_nodes[place].label = label;
  return place;
}

// Puts a node ahead of the part of the label that is behind `depth` characters.
void SuffixIndex::split(std::size_t node, std::size_t depth) {
  // A copy: making a node may move all others.
  const Numbers rest = m_nodes[node].label.substr(depth);
  const std::size_t lower = makeNode(rest);
  Node& upper = m_nodes[node];
  m_nodes[lower].children = std::exchange(upper.children, {{m_nodes[lower].label.front(), lower}});
  m_nodes[lower].ranks = std::exchange(upper.ranks, {});
  upper.label.resize(depth);
}

// A node that is left with a single child stays: the next trigger often forks there once more.
void SuffixIndex::removeEmptyNodes(const std::vector<std::size_t>& path) {
  for (std::size_t level = path.size() - 1; level > 0; --level) {
    Node& node = m_nodes[path[level]];
    if (!node.ranks.empty() || !node.children.empty()) return;
    std::vector<Child>& siblings = m_nodes[path[level - 1]].children;
    siblings.erase(placeOf(siblings, node.label.front()));
    node = {};
    m_unused.push_back(path[level]);
  }
}

std::vector<SuffixIndex::Child>::const_iterator SuffixIndex::placeOf(
    const std::vector<Child>& children, Number first) {
  return std::lower_bound(children.begin(), children.end(), first,
                          [](const Child& child, Number wanted) { return child.first < wanted; });
}

std::optional<std::size_t> SuffixIndex::childOf(const Node& node, Number first) {
  const auto place = placeOf(node.children, first);
  if (place == node.children.end() || place->first != first) return std::nullopt;
  return place->node;
}

std::optional<Rank> SuffixIndex::find(QStringView text) const {
  ReverseGraphemes walk(text);
  const auto nextNumber = [&]() -> std::optional<Number> {
    const QStringView grapheme = walk.next();
    if (grapheme.isEmpty()) return std::nullopt;
    return m_graphemes.find(grapheme);
  };

  std::optional<Rank> best;
  std::size_t node = root;
  while (!m_nodes[node].children.empty()) {
    const auto first = nextNumber();
    const auto child = first ? childOf(m_nodes[node], *first) : std::nullopt;
    if (!child) break;
    node = *child;
    const Node& here = m_nodes[node];
    for (const Number number : std::u32string_view(here.label).substr(1)) {
      if (nextNumber() != number) return best;
    }
    if (!here.ranks.empty() && (!best || here.ranks.front() < *best)) best = here.ranks.front();
  }
  return best;
}

}  // namespace zarvy
