#include "ui/quicksearch/QuickSearchRanking.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "base/text/CaseMapping.h"

namespace zarvy {
namespace {

constexpr std::size_t rankCount = 3;

// 0 for what equals the query, 1 for what begins with it, 2 for the rest.
std::size_t rankOf(const SearchedTexts& snippet, const QString& query) {
  if (snippet.title == query || snippet.trigger == query) return 0;
  if (snippet.title.startsWith(query) || snippet.trigger.startsWith(query)) return 1;
  return 2;
}

bool holdsEach(const QList<QStringView>& words, const SearchedTexts& snippet) {
  return std::all_of(words.begin(), words.end(), [&snippet](QStringView word) {
    return snippet.title.contains(word) || snippet.trigger.contains(word);
  });
}

}  // namespace

QList<SearchedTexts> searchedTextsOf(const SnippetList& snippets) {
  QList<SearchedTexts> result;
  result.reserve(snippets.size());
  for (const Snippet& snippet : snippets) {
    result.append({lowerCased(snippet.title), lowerCased(snippet.trigger)});
  }
  return result;
}

std::vector<qsizetype> quickSearchResults(const QList<SearchedTexts>& snippets,
                                          const QString& searchText) {
  if (searchText.isEmpty()) {
    std::vector<qsizetype> all(static_cast<std::size_t>(snippets.size()));
    std::iota(all.begin(), all.end(), 0);
    return all;
  }
  const QString query = lowerCased(searchText);
  const QList<QStringView> words = QStringView(query).split(u' ', Qt::SkipEmptyParts);
  std::array<std::vector<qsizetype>, rankCount> ranked;
  for (qsizetype index = 0; index < snippets.size(); ++index) {
    const SearchedTexts& snippet = snippets.at(index);
    if (holdsEach(words, snippet)) ranked[rankOf(snippet, query)].push_back(index);
  }
  std::vector<qsizetype> result = std::move(ranked.front());
  for (std::size_t rank = 1; rank < rankCount; ++rank) {
    result.insert(result.end(), ranked[rank].begin(), ranked[rank].end());
  }
  return result;
}

}  // namespace zarvy
