#include "core/matching/SuffixIndex.h"

#include <algorithm>
#include <tuple>

#include "base/text/Graphemes.h"

namespace zarvy {

SuffixIndex::SuffixIndex(const QList<Snippet>& snippets) {
  std::vector<Entry> entries = numberTriggers(snippets);
  if (entries.empty()) return;
  sortEntries(entries);
  grow(entries);
}

std::vector<SuffixIndex::Entry> SuffixIndex::numberTriggers(const QList<Snippet>& snippets) {
  std::vector<Entry> entries;
  for (qsizetype position = 0; position < snippets.size(); ++position) {
    const Snippet& snippet = snippets.at(position);
    if (snippet.isRegexTrigger) continue;
    const std::size_t begin = m_numbers.size();
    ReverseGraphemes walk(snippet.trigger);
    for (QStringView grapheme = walk.next(); !grapheme.isEmpty(); grapheme = walk.next()) {
      m_numbers.push_back(m_graphemes.add(grapheme));
    }
    const std::size_t length = m_numbers.size() - begin;
    if (length < 2) {
      m_numbers.resize(begin);
    } else {
      entries.push_back({begin, length, position});
    }
  }
  return entries;
}

// By their characters, and by position among the same ones.
void SuffixIndex::sortEntries(std::vector<Entry>& entries) const {
  const auto charactersOf = [this](const Entry& entry) {
    const Number* const begin = m_numbers.data() + entry.begin;
    return std::pair(begin, begin + entry.length);
  };
  std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
    const auto [aBegin, aEnd] = charactersOf(a);
    const auto [bBegin, bEnd] = charactersOf(b);
    const auto order = std::lexicographical_compare_three_way(aBegin, aEnd, bBegin, bEnd);
    return order != 0 ? order < 0 : a.position < b.position;
  });
}

// Level by level, so that the nodes near the root, which every search visits, lie together.
void SuffixIndex::grow(const std::vector<Entry>& entries) {
  std::vector<Span> spans{{0, entries.size(), 0}};
  m_nodes.emplace_back();
  m_firstCharacters.push_back(m_numbers[entries.front().begin]);
  for (std::size_t index = 0; index < m_nodes.size(); ++index) {
    fillNode(index, Span(spans[index]), entries, spans);
  }
}

void SuffixIndex::fillNode(std::size_t index, const Span& span, const std::vector<Entry>& entries,
                           std::vector<Span>& spans) {
  const Entry& front = entries[span.first];
  const std::size_t depth = commonLength(front, entries[span.last - 1], span.depth);
  Node node;
  node.labelBegin = front.begin + span.depth;
  node.labelEnd = front.begin + depth;
  node.firstChild = m_nodes.size();

  // Sorted as they are, the triggers that end here come first, the one of lowest position ahead.
  std::size_t next = span.first;
  if (front.length == depth) node.position = front.position;
  while (next < span.last && entries[next].length == depth) ++next;

  const auto characterHere = [&](const Entry& entry) { return m_numbers[entry.begin + depth]; };
  while (next < span.last) {
    std::size_t end = next;
    while (end < span.last && characterHere(entries[end]) == characterHere(entries[next])) ++end;
    m_nodes.emplace_back();
    m_firstCharacters.push_back(characterHere(entries[next]));
    spans.push_back({next, end, depth});
    ++node.childCount;
    next = end;
  }
  m_nodes[index] = node;
}

// How many characters two triggers have in common from the start, `from` of which are known.
std::size_t SuffixIndex::commonLength(const Entry& a, const Entry& b, std::size_t from) const {
  const std::size_t limit = std::min(a.length, b.length);
  std::size_t length = from;
  while (length < limit && m_numbers[a.begin + length] == m_numbers[b.begin + length]) ++length;
  return length;
}

const SuffixIndex::Node* SuffixIndex::child(const Node& node, Number first) const {
  const Number* const begin = m_firstCharacters.data() + node.firstChild;
  const Number* const end = begin + node.childCount;
  const Number* const found = std::lower_bound(begin, end, first);
  if (found == end || *found != first) return nullptr;
  return &m_nodes[static_cast<std::size_t>(found - m_firstCharacters.data())];
}

std::optional<qsizetype> SuffixIndex::find(QStringView text) const {
  if (m_nodes.empty()) return std::nullopt;
  ReverseGraphemes walk(text);
  const auto nextNumber = [&]() -> std::optional<Number> {
    const QStringView grapheme = walk.next();
    if (grapheme.isEmpty()) return std::nullopt;
    return m_graphemes.find(grapheme);
  };

  std::optional<qsizetype> best;
  const Node* node = &m_nodes.front();
  std::size_t label = node->labelBegin;
  while (node) {
    for (; label < node->labelEnd; ++label) {
      if (nextNumber() != m_numbers[label]) return best;
    }
    if (node->position != noPosition && (!best || node->position < *best)) best = node->position;
    if (node->childCount == 0) break;
    const std::optional<Number> number = nextNumber();
    if (!number) break;
    node = child(*node, *number);
    if (node) label = node->labelBegin + 1;
  }
  return best;
}

}  // namespace zarvy
