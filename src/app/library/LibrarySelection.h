#pragma once

#include <optional>

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

namespace zarvy {

// What of the library the main window shows and has selected. Not remembered. A signal is raised
// only when a value has really changed. Main thread.
class LibrarySelection final : public QObject {
  Q_OBJECT

 public:
  // The folder whose snippets are listed; absent: those of all.
  [[nodiscard]] const std::optional<QUuid>& selectedFolderID() const { return m_folderID; }

  // The one snippet in the editor.
  [[nodiscard]] const std::optional<QUuid>& selectedSnippetID() const { return m_snippetID; }

  // The snippets that are marked in the list.
  [[nodiscard]] const QSet<QUuid>& selectedSnippetIDs() const { return m_snippetIDs; }

  // What the list is narrowed down by; empty: nothing.
  [[nodiscard]] const QString& searchText() const { return m_searchText; }

  // The user asked for a new snippet, and the main window is to begin one.
  [[nodiscard]] bool pendingNewSnippet() const { return m_pendingNewSnippet; }

  void setSelectedFolderID(const std::optional<QUuid>& id);
  void setSelectedSnippetID(const std::optional<QUuid>& id);
  void setSelectedSnippetIDs(const QSet<QUuid>& ids);
  void setSearchText(const QString& text);
  void setPendingNewSnippet(bool pending);

  // Takes the snippets out of both selections.
  void forgetSnippets(const QSet<QUuid>& ids);
  void forgetFolder(const QUuid& id);

 Q_SIGNALS:
  void selectedFolderIDChanged();
  void selectedSnippetIDChanged();
  void selectedSnippetIDsChanged();
  void searchTextChanged();
  void pendingNewSnippetChanged();

 private:
  std::optional<QUuid> m_folderID;
  std::optional<QUuid> m_snippetID;
  QSet<QUuid> m_snippetIDs;
  QString m_searchText;
  bool m_pendingNewSnippet = false;
};

}  // namespace zarvy
