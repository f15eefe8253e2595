#include "app/library/LibrarySelection.h"

#include "app/library/AssignIfChanged.h"

namespace zarvy {

void LibrarySelection::setSelectedFolderID(const std::optional<QUuid>& id) {
  if (assignIfChanged(m_folderID, id)) Q_EMIT selectedFolderIDChanged();
}

void LibrarySelection::setSelectedSnippetID(const std::optional<QUuid>& id) {
  if (assignIfChanged(m_snippetID, id)) Q_EMIT selectedSnippetIDChanged();
}

void LibrarySelection::setSelectedSnippetIDs(const QSet<QUuid>& ids) {
  if (assignIfChanged(m_snippetIDs, ids)) Q_EMIT selectedSnippetIDsChanged();
}

void LibrarySelection::setSearchText(const QString& text) {
  if (assignIfChanged(m_searchText, text)) Q_EMIT searchTextChanged();
}

void LibrarySelection::setPendingNewSnippet(bool pending) {
  if (assignIfChanged(m_pendingNewSnippet, pending)) Q_EMIT pendingNewSnippetChanged();
}

void LibrarySelection::forgetSnippets(const QSet<QUuid>& ids) {
  if (m_snippetID && ids.contains(*m_snippetID)) setSelectedSnippetID(std::nullopt);
  setSelectedSnippetIDs(QSet(m_snippetIDs).subtract(ids));
}

void LibrarySelection::forgetFolder(const QUuid& id) {
  if (m_folderID == id) setSelectedFolderID(std::nullopt);
}

}  // namespace zarvy
