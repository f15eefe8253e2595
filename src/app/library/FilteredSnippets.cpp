#include "app/library/FilteredSnippets.h"

#include <algorithm>
#include <iterator>

#include "base/text/CaseInsensitiveSearch.h"

namespace zarvy {

QList<Snippet> filteredSnippets(const QList<Snippet>& snippets,
                                const std::optional<QUuid>& folderID, const QString& searchText,
                                const QByteArray& locale) {
  if (!folderID && searchText.isEmpty()) return snippets;
  const CaseInsensitiveSearch search(searchText, locale);
  const auto isWanted = [&](const Snippet& snippet) {
    if (folderID && snippet.folderID != folderID) return false;
    return searchText.isEmpty() || search.isIn(snippet.title) || search.isIn(snippet.trigger) ||
           search.isIn(snippet.replacement);
  };
  QList<Snippet> found;
  std::copy_if(snippets.begin(), snippets.end(), std::back_inserter(found), isWanted);
  return found;
}

}  // namespace zarvy
