#include "app/AppState.h"

#include <QPointer>

#include "core/model/FirstRunContent.h"

namespace zarvy {

AppState::AppState(const LibraryServices& library, const CoordinatorServices& coordinator,
                   const ExpansionServices& expansion, const PresenceServices& presence)
    : m_engine(expansion.engine),
      m_scheduler(expansion.scheduler),
      m_libraryServices(library),
      m_filter(library.locale),
      m_sync(m_library, m_engine, library.cloudSync, library.documents, m_scheduler, library.clock),
      m_saver(m_library, m_sync, m_engine, library.cloudSync, library.documents, m_scheduler),
      m_operations(m_library, m_selection, m_saver, m_engine, library.clock),
      m_loader(library.documents, library.stores, m_scheduler),
      m_presence(m_library, presence),
      m_coordinator(m_library, coordinator),
      m_expansion(m_library, m_coordinator, expansion) {}

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
  if (m_library.settings().hideDockIcon) m_presence.applyHideDockIcon();
  m_engine.setSnippets(m_library.snippets());
  m_engine.setGlobalVariables(m_library.globalVariables());
  if (m_library.settings().iCloudSyncEnabled) syncIfEnabled();
  if (m_expansion.hasAccessibilityPermission() && !m_expansion.isPaused()) {
    m_expansion.startExpansion();
  }
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
  m_saver.scheduleSave();
}

void AppState::changeSettings(const Settings& settings) {
  if (!m_library.isLoaded()) return;
  const Settings before = m_library.settings();
  m_library.setSettings(settings);
  m_libraryServices.documents.post(
      [settings](const DataStore& store) { store.saveSettings(settings); });
  if (settings.launchAtLogin != before.launchAtLogin) m_presence.applyLaunchAtLogin();
  if (settings.hideDockIcon != before.hideDockIcon) m_presence.applyHideDockIcon();
  m_expansion.applyHotKey();
  if (settings.iCloudSyncEnabled && !before.iCloudSyncEnabled) syncIfEnabled();
}

void AppState::changeHotKey(const HotKey& key) {
  Settings changed = m_library.settings();
  changed.quickSearchKeyCode = key.keyCode;
  changed.quickSearchModifiers = key.modifiers;
  changeSettings(changed);
}

void AppState::syncIfEnabled() {
  m_scheduler.post([weak = QPointer(this)] {
    AppState* const state = weak;
    if (!state || !state->m_library.settings().iCloudSyncEnabled) return;
    state->m_sync.performSync();
  });
}

SnippetList AppState::filteredSnippets() {
  return m_filter.filtered(m_library.snippets(), m_selection.selectedFolderID(),
                           m_selection.searchText());
}

}  // namespace zarvy
