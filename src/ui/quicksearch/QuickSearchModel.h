#pragma once

#include <vector>

#include <QAbstractListModel>
#include <QList>
#include <QString>

#include "core/model/Folder.h"
#include "core/model/SnippetList.h"
#include "ui/quicksearch/QuickSearchRanking.h"

namespace zarvy {

// What a search in a library finds, one row for each snippet: its title for display, its title and
// trigger for a screen reader, and what the roles below say. Main thread.
class QuickSearchModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    triggerRole = Qt::UserRole,  // QString
    folderColorRole,             // FolderColor
  };

  // Shows all of `snippets`, and goes on with the lists as they are now.
  QuickSearchModel(const SnippetList& snippets, const QList<Folder>& folders);

  void setSearchText(const QString& searchText);

  // The whole library.
  [[nodiscard]] qsizetype snippetCount() const { return m_snippets.size(); }

  // `row` is one of the model's.
  [[nodiscard]] const Snippet& snippetAt(int row) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  const SnippetList m_snippets;
  const QList<Folder> m_folders;
  const QList<SearchedTexts> m_texts;
  std::vector<qsizetype> m_results;  // positions in m_snippets
};

}  // namespace zarvy
