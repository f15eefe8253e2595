#include "core/matching/TriggerLibrary.h"

#include <algorithm>

namespace zarvy {
namespace {

qsizetype placeIn(const std::vector<Rank>& ranks, Rank rank) {
  return std::lower_bound(ranks.begin(), ranks.end(), rank) - ranks.begin();
}

}  // namespace

TriggerLibrary::TriggerLibrary(const SnippetList& snippets) {
  m_triggers.reserve(snippets.size());
  follow(snippets, {ListChange::Kind::added, 0, snippets.size()});
}

void TriggerLibrary::follow(const SnippetList& snippets, const ListChange& change) {
  if (change.kind == ListChange::Kind::reset) {
    *this = TriggerLibrary(snippets);
    return;
  }
  const SnippetList before = m_snippets;
  m_snippets = snippets;
  const auto firstRank = m_ranks.begin() + change.first;
  auto old = before.iteratorAt(change.first);
  auto now = snippets.iteratorAt(change.first);
  switch (change.kind) {
    case ListChange::Kind::added:
      for (qsizetype left = change.count; left > 0; --left) addLast(*now++);
      break;
    case ListChange::Kind::removed:
      for (auto rank = firstRank; rank != firstRank + change.count; ++rank) remove(*old++, *rank);
      m_ranks.erase(firstRank, firstRank + change.count);
      break;
    case ListChange::Kind::updated:
      for (auto rank = firstRank; rank != firstRank + change.count; ++rank) {
        remove(*old++, *rank);
        add(*now++, *rank);
      }
      break;
    case ListChange::Kind::reset:
      break;
  }
}

std::optional<Snippet> TriggerLibrary::literalThatEnds(QStringView text) const {
  const auto rank = m_literals.find(text);
  return rank ? std::optional(snippetOf(*rank)) : std::nullopt;
}

std::optional<QString> TriggerLibrary::replacementOf(const QString& trigger) const {
  const auto ranks = m_triggers.constFind(trigger);
  if (ranks == m_triggers.cend()) return std::nullopt;
  return snippetOf(ranks->front()).replacement;
}

void TriggerLibrary::addLast(const Snippet& snippet) {
  const Rank rank = m_ranks.empty() ? 0 : m_ranks.back() + 1;
  m_ranks.push_back(rank);
  add(snippet, rank);
}

void TriggerLibrary::add(const Snippet& snippet, Rank rank) {
  insertRank(m_triggers[snippet.trigger], rank);
  if (!snippet.isRegexTrigger) {
    m_literals.add(snippet.trigger, rank);
  } else if (!hasTooLongPattern(snippet)) {
    const qsizetype place = placeIn(m_regexRanks, rank);
    m_regexRanks.insert(m_regexRanks.begin() + place, rank);
    m_regexes.insert(place, snippet);
  }
}

void TriggerLibrary::remove(const Snippet& snippet, Rank rank) {
  const auto ranks = m_triggers.find(snippet.trigger);
  removeRank(*ranks, rank);
  if (ranks->empty()) m_triggers.erase(ranks);
  if (!snippet.isRegexTrigger) {
    m_literals.remove(snippet.trigger, rank);
  } else if (!hasTooLongPattern(snippet)) {
    const qsizetype place = placeIn(m_regexRanks, rank);
    m_regexRanks.erase(m_regexRanks.begin() + place);
    m_regexes.removeAt(place);
  }
}

const Snippet& TriggerLibrary::snippetOf(Rank rank) const {
  return m_snippets.at(placeIn(m_ranks, rank));
}

}  // namespace zarvy
