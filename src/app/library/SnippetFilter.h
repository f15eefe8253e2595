#pragma once

#include <optional>
#include <utility>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QUuid>

#include "core/model/SnippetList.h"

namespace zarvy {

// Narrows a library down to what a list shows. Keeps each snippet's texts as searches compare them,
// so that they are folded once and not at every key typed into the search. One thread.
class SnippetFilter {
 public:
  // Searches disregard case as the language of `locale` sees it ("tr_TR").
  explicit SnippetFilter(QByteArray locale) : m_locale(std::move(locale)) {}

  // Those of `snippets`, in their order, that lie in the folder of that id, unless it is absent,
  // and in whose title, trigger or replacement `searchText` occurs. An empty `searchText` narrows
  // nothing down.
  [[nodiscard]] SnippetList filtered(const SnippetList& snippets,
                                     const std::optional<QUuid>& folderID,
                                     const QString& searchText);

 private:
  struct FoldedText {
    QString text;
    QString folded;
  };
  struct Texts {
    FoldedText title;
    FoldedText trigger;
    FoldedText replacement;
  };

  [[nodiscard]] const QString& folded(FoldedText& known, const QString& text) const;

  const QByteArray m_locale;
  QHash<QUuid, Texts> m_texts;  // by snippet
};

}  // namespace zarvy
