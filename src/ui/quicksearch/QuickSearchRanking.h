#pragma once

#include <vector>

#include <QList>
#include <QString>

#include "core/model/SnippetList.h"

namespace zarvy {

// What a search compares with: the title and the trigger of one snippet, in lower case.
struct SearchedTexts {
  QString title;
  QString trigger;
};

// One entry for each snippet, in their order.
[[nodiscard]] QList<SearchedTexts> searchedTextsOf(const SnippetList& snippets);

// The positions of the snippets that a search for `searchText` finds, in the order in which they
// are shown. An empty text finds all of them. Otherwise each of its words, parted by blanks, must
// stand somewhere in the title or in the trigger, without regard to case; what equals the whole
// text comes first, then what begins with it, then the rest, and the order of the library decides
// among equals. Any thread.
[[nodiscard]] std::vector<qsizetype> quickSearchResults(const QList<SearchedTexts>& snippets,
                                                        const QString& searchText);

}  // namespace zarvy
