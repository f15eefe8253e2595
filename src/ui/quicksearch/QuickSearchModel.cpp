#include "ui/quicksearch/QuickSearchModel.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QuickSearchModel::QuickSearchModel(const SnippetList& snippets, const QList<Folder>& folders)
    : m_snippets(snippets),
      m_folders(folders),
      m_texts(searchedTextsOf(snippets)),
      m_results(quickSearchResults(m_texts, {})) {}

void QuickSearchModel::setSearchText(const QString& searchText) {
  beginResetModel();
  m_results = quickSearchResults(m_texts, searchText);
  endResetModel();
}

const Snippet& QuickSearchModel::snippetAt(int row) const {
  return m_snippets.at(m_results.at(static_cast<std::size_t>(row)));
}

int QuickSearchModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_results.size());
}

QVariant QuickSearchModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Snippet& snippet = snippetAt(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return snippet.title;
    case Qt::AccessibleTextRole:
      return QString(snippet.title + u", "_s + snippet.trigger);
    case triggerRole:
      return snippet.trigger;
    case folderColorRole:
      return QVariant::fromValue(folderColorOf(snippet, m_folders));
    default:
      return {};
  }
}

}  // namespace zarvy
