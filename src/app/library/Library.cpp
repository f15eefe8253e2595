#include "app/library/Library.h"

#include "app/library/AssignIfChanged.h"

namespace zarvy {

void Library::setSnippets(const SnippetList& snippets) {
  if (assignIfChanged(m_snippets, snippets)) Q_EMIT snippetsChanged({});
}

ListChange Library::appendSnippet(const Snippet& snippet) {
  const ListChange change{ListChange::Kind::added, m_snippets.size(), 1};
  m_snippets.append(snippet);
  Q_EMIT snippetsChanged(change);
  return change;
}

ListChange Library::replaceSnippet(qsizetype position, const Snippet& snippet) {
  const ListChange change{ListChange::Kind::updated, position, 1};
  if (m_snippets.at(position) == snippet) return change;
  m_snippets.replace(position, snippet);
  Q_EMIT snippetsChanged(change);
  return change;
}

ListChange Library::removeSnippets(qsizetype first, qsizetype count) {
  const ListChange change{ListChange::Kind::removed, first, count};
  m_snippets.remove(first, count);
  Q_EMIT snippetsChanged(change);
  return change;
}

void Library::setFolders(const QList<Folder>& folders) {
  if (assignIfChanged(m_folders, folders)) Q_EMIT foldersChanged();
}

void Library::setGlobalVariables(const QList<GlobalVariable>& globalVariables) {
  if (assignIfChanged(m_globalVariables, globalVariables)) Q_EMIT globalVariablesChanged();
}

void Library::setSettings(const Settings& settings) {
  // The record has no equality of its own; its stored form holds every field.
  if (m_settings.toJson() == settings.toJson()) return;
  m_settings = settings;
  Q_EMIT settingsChanged();
}

void Library::setLoaded() {
  if (assignIfChanged(m_isLoaded, true)) Q_EMIT isLoadedChanged();
}

void Library::setRecentImports(const QList<ImportBatch>& recentImports) {
  if (assignIfChanged(m_recentImports, recentImports)) Q_EMIT recentImportsChanged();
}

}  // namespace zarvy
