#include "app/library/SnippetFilter.h"

#include <algorithm>
#include <iterator>

#include "base/text/CaseInsensitiveSearch.h"

namespace zarvy {
namespace {

// Most texts are the very ones that were folded, so that nothing has to be compared.
bool isSame(const QString& a, const QString& b) {
  return a.isSharedWith(b) || a == b;
}

}  // namespace

SnippetList SnippetFilter::filtered(const SnippetList& snippets,
                                    const std::optional<QUuid>& folderID,
                                    const QString& searchText) {
  if (!folderID && searchText.isEmpty()) return snippets;
  if (m_texts.size() > 2 * snippets.size()) m_texts.clear();  // most of them have been deleted
  const CaseInsensitiveSearch search(searchText, m_locale);
  const auto isWanted = [&](const Snippet& snippet) {
    if (folderID && snippet.folderID != folderID) return false;
    if (searchText.isEmpty()) return true;
    Texts& texts = m_texts[snippet.id];
    return search.isInFolded(folded(texts.title, snippet.title)) ||
           search.isInFolded(folded(texts.trigger, snippet.trigger)) ||
           search.isInFolded(folded(texts.replacement, snippet.replacement));
  };
  QList<Snippet> found;
  std::copy_if(snippets.begin(), snippets.end(), std::back_inserter(found), isWanted);
  return found;
}

const QString& SnippetFilter::folded(FoldedText& known, const QString& text) const {
  if (known.folded.isNull() || !isSame(known.text, text)) {
    known = {.text = text, .folded = CaseInsensitiveSearch::folded(text, m_locale)};
  }
  return known.folded;
}

}  // namespace zarvy
