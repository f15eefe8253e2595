#include "app/AppState.h"

#include <QPointer>

#include "app/library/FilteredSnippets.h"
#include "core/model/FirstRunContent.h"

namespace zarvy {

AppState::AppState(const ExpansionServices& expansion, const LibraryServices& library,
                   const PresenceServices& presence)
    : m_expansionServices(expansion),
      m_libraryServices(library),
      m_sync(m_library, expansion.engine, library.cloudSync, library.documents, expansion.scheduler,
             library.clock),
      m_saver(m_library, m_sync, expansion.engine, library.cloudSync, library.documents,
              expansion.scheduler),
      m_operations(m_library, m_selection, m_saver, expansion.engine, library.clock),
      m_loader(library.documents, library.stores, expansion.scheduler),
      m_presence(m_library, presence),
      m_coordinator(m_library, expansion),
      m_expansion(m_library, m_coordinator, expansion) {
  handOnSignals();
}

void AppState::handOnSignals() {
  connect(&m_library, &Library::isLoadedChanged, this, &AppState::isLibraryLoadedChanged);
  connect(&m_library, &Library::snippetsChanged, this, &AppState::snippetsChanged);
  connect(&m_library, &Library::foldersChanged, this, &AppState::foldersChanged);
  connect(&m_library, &Library::globalVariablesChanged, this, &AppState::globalVariablesChanged);
  connect(&m_library, &Library::settingsChanged, this, &AppState::settingsChanged);
  connect(&m_library, &Library::recentImportsChanged, this, &AppState::recentImportsChanged);
  connect(&m_sync, &LibrarySync::syncStatusChanged, this, &AppState::syncStatusChanged);
  connect(&m_sync, &LibrarySync::lastSyncDateChanged, this, &AppState::lastSyncDateChanged);
  connect(&m_sync, &LibrarySync::syncMetadataChanged, this, &AppState::syncMetadataChanged);
  connect(&m_expansion, &ExpansionService::isPausedChanged, this, &AppState::isPausedChanged);
  connect(&m_expansion, &ExpansionService::hasAccessibilityPermissionChanged, this,
          &AppState::hasAccessibilityPermissionChanged);
  connect(&m_expansion, &ExpansionService::secureInputAppNameChanged, this,
          &AppState::secureInputAppNameChanged);
  connect(&m_expansion, &ExpansionService::takenHotKeyChanged, this, &AppState::takenHotKeyChanged);
  connect(&m_coordinator, &ExpansionCoordinator::pendingExpansionChanged, this,
          &AppState::pendingExpansionChanged);
  connect(&m_coordinator, &ExpansionCoordinator::showingFillInFormChanged, this,
          &AppState::showingFillInFormChanged);
  connect(&m_coordinator, &ExpansionCoordinator::pendingMatchLengthChanged, this,
          &AppState::pendingMatchLengthChanged);
}

void AppState::loadData() {
  if (m_hasLoadedData) return;
  m_hasLoadedData = true;
  Q_EMIT hasLoadedDataChanged();
  m_loader.load([weak = QPointer(this)](const LoadedLibrary& loaded) {
    if (weak) weak->adoptLibrary(loaded);
  });
}

void AppState::adoptLibrary(const LoadedLibrary& loaded) {
  m_library.setLoaded();
  adoptSnippetsAndFolders(loaded);
  m_library.setSettings(loaded.settings);
  m_library.setRecentImports(loaded.importBatches);
  m_sync.setSyncMetadata(loaded.syncMetadata);
  m_library.setGlobalVariables(loaded.globalVariables);
  if (settings().hideDockIcon) m_presence.applyHideDockIcon();
  m_expansionServices.engine.setSnippets(snippets());
  m_expansionServices.engine.setGlobalVariables(globalVariables());
  if (settings().iCloudSyncEnabled) syncIfEnabled();
  if (hasAccessibilityPermission() && !isPaused()) startExpansion();
}

// The save of the first-run content is asked for ahead of the settings: it is never uploaded.
void AppState::adoptSnippetsAndFolders(const LoadedLibrary& loaded) {
  const bool isFirstRun = loaded.snippets.isEmpty() && loaded.folders.isEmpty();
  if (!isFirstRun) {
    m_library.setSnippets(loaded.snippets);
    m_library.setFolders(loaded.folders);
    return;
  }
  const FirstRunContent content = FirstRunContent::make(m_libraryServices.clock);
  m_library.setSnippets(content.snippets);
  m_library.setFolders(content.folders);
  scheduleSave();
}

void AppState::changeSettings(const Settings& settings) {
  if (!isLibraryLoaded()) return;
  const Settings before = this->settings();
  m_library.setSettings(settings);
  m_libraryServices.documents.post(
      [settings](const DataStore& store) { store.saveSettings(settings); });
  if (settings.launchAtLogin != before.launchAtLogin) m_presence.applyLaunchAtLogin();
  if (settings.hideDockIcon != before.hideDockIcon) m_presence.applyHideDockIcon();
  m_expansion.applyHotKey();
  if (settings.iCloudSyncEnabled && !before.iCloudSyncEnabled) syncIfEnabled();
}

void AppState::changeHotKey(const HotKey& key) {
  Settings changed = settings();
  changed.quickSearchKeyCode = key.keyCode;
  changed.quickSearchModifiers = key.modifiers;
  changeSettings(changed);
}

void AppState::syncIfEnabled() {
  m_expansionServices.scheduler.post([weak = QPointer(this)] {
    AppState* const state = weak;
    if (state && state->settings().iCloudSyncEnabled) state->performSync();
  });
}

QList<Snippet> AppState::filteredSnippets() const {
  return zarvy::filteredSnippets(snippets(), m_selection.selectedFolderID(),
                                 m_selection.searchText(), m_libraryServices.locale);
}

}  // namespace zarvy
