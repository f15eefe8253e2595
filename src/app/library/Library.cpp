#include "app/library/Library.h"

#include "app/library/AssignIfChanged.h"

namespace zarvy {

void Library::setSnippets(const QList<Snippet>& snippets) {
  if (assignIfChanged(m_snippets, snippets)) Q_EMIT snippetsChanged();
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
