#pragma once

#include <QList>
#include <QObject>

#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/ImportBatch.h"
#include "core/model/Settings.h"
#include "core/model/SnippetList.h"

namespace zarvy {

// What belongs to the user, in memory. Knows of no document and of no screen: who changes it sees
// to the rest. A signal is raised only when a value has really changed. Main thread.
class Library final : public QObject {
  Q_OBJECT

 public:
  // In stored order.
  [[nodiscard]] const SnippetList& snippets() const { return m_snippets; }
  [[nodiscard]] const QList<Folder>& folders() const { return m_folders; }
  [[nodiscard]] const QList<GlobalVariable>& globalVariables() const { return m_globalVariables; }

  [[nodiscard]] const Settings& settings() const { return m_settings; }

  // The documents have been read. Until then all is empty, and nothing of it is to be saved: it
  // would take the place of what is on the disk.
  [[nodiscard]] bool isLoaded() const { return m_isLoaded; }
  void setLoaded();

  // Newest first.
  [[nodiscard]] const QList<ImportBatch>& recentImports() const { return m_recentImports; }

  void setSnippets(const SnippetList& snippets);
  // Each of these changes a stretch of the list, and gives what has become of it.
  ListChange appendSnippet(const Snippet& snippet);
  ListChange replaceSnippet(qsizetype position, const Snippet& snippet);
  ListChange removeSnippets(qsizetype first, qsizetype count);

  void setFolders(const QList<Folder>& folders);
  void setGlobalVariables(const QList<GlobalVariable>& globalVariables);
  void setSettings(const Settings& settings);
  void setRecentImports(const QList<ImportBatch>& recentImports);

 Q_SIGNALS:
  // `change` leads from the list that was there before to that of now. A slot must not change the
  // list: further changes of the same deletion may be on their way.
  void snippetsChanged(const ListChange& change);
  void foldersChanged();
  void globalVariablesChanged();
  void settingsChanged();
  void recentImportsChanged();
  void isLoadedChanged();

 private:
  SnippetList m_snippets;
  QList<Folder> m_folders;
  QList<GlobalVariable> m_globalVariables;
  Settings m_settings;
  QList<ImportBatch> m_recentImports;
  bool m_isLoaded = false;
};

}  // namespace zarvy
