#pragma once

#include <optional>

#include <QList>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include "app/expansion/ExpansionCoordinator.h"
#include "app/expansion/ExpansionService.h"
#include "app/expansion/ExpansionServices.h"
#include "app/library/Library.h"
#include "app/library/LibraryLoader.h"
#include "app/library/LibraryOperations.h"
#include "app/library/LibrarySaver.h"
#include "app/library/LibrarySelection.h"
#include "app/library/LibraryServices.h"
#include "app/library/LibrarySync.h"
#include "app/presence/DesktopPresence.h"

namespace zarvy {

// The state that all screens share, and the operations that they call. What is behind them lives in
// collaborators, each of which tells of itself; this object owns them, loads the library at start
// and hands on. A signal is raised only when a value has really changed. Main thread.
class AppState final : public QObject {
  Q_OBJECT

 public:
  AppState(const ExpansionServices& expansion, const LibraryServices& library,
           const PresenceServices& presence);

  // Reads all documents, then hands the library to the engine and starts expansion, if it may run.
  // Returns at once; does nothing but the first time.
  void loadData();
  // True from the first loadData() on; says nothing of the load's having come to its end.
  [[nodiscard]] bool hasLoadedData() const { return m_hasLoadedData; }

  // That it has: until then the library is empty, and changes of it are lost.
  [[nodiscard]] bool isLibraryLoaded() const { return m_library.isLoaded(); }

  // --- The library; see Library, LibraryOperations, LibrarySaver.

  [[nodiscard]] const QList<Snippet>& snippets() const { return m_library.snippets(); }
  [[nodiscard]] const QList<Folder>& folders() const { return m_library.folders(); }
  [[nodiscard]] const QList<GlobalVariable>& globalVariables() const {
    return m_library.globalVariables();
  }
  [[nodiscard]] const QList<ImportBatch>& recentImports() const {
    return m_library.recentImports();
  }

  void addSnippet(const Snippet& snippet) { m_operations.addSnippet(snippet); }
  void deleteSnippet(const QUuid& id) { m_operations.deleteSnippet(id); }
  void deleteSnippets(const QSet<QUuid>& ids) { m_operations.deleteSnippets(ids); }
  [[nodiscard]] std::optional<Snippet> selectedSnippet() const {
    return m_operations.selectedSnippet();
  }
  void setSelectedSnippet(const std::optional<Snippet>& snippet) {
    m_operations.setSelectedSnippet(snippet);
  }

  // For a change of a folder itself: scheduleSave() behind it.
  void setFolders(const QList<Folder>& folders) { m_library.setFolders(folders); }
  void addFolder(const Folder& folder) { m_operations.addFolder(folder); }
  void deleteFolder(const QUuid& id) { m_operations.deleteFolder(id); }

  void addGlobalVariable(const GlobalVariable& variable) {
    m_operations.addGlobalVariable(variable);
  }
  void updateGlobalVariable(const GlobalVariable& variable) {
    m_operations.updateGlobalVariable(variable);
  }
  void deleteGlobalVariable(const QUuid& id) { m_operations.deleteGlobalVariable(id); }

  [[nodiscard]] bool isTriggerDuplicate(const QString& trigger,
                                        const std::optional<QUuid>& excludedID = {}) const {
    return m_operations.isTriggerDuplicate(trigger, excludedID);
  }
  [[nodiscard]] bool isVariableNameDuplicate(const QString& name,
                                             const std::optional<QUuid>& excludedID = {}) const {
    return m_operations.isVariableNameDuplicate(name, excludedID);
  }

  void scheduleSave() { m_saver.scheduleSave(); }
  void saveGlobalVariablesAndUpload() { m_saver.saveGlobalVariablesAndUpload(); }

  // --- The selection; see LibrarySelection.

  [[nodiscard]] LibrarySelection& selection() { return m_selection; }
  [[nodiscard]] const LibrarySelection& selection() const { return m_selection; }
  // What of the library the selected folder and the search text leave, in stored order.
  [[nodiscard]] QList<Snippet> filteredSnippets() const;

  // --- The settings.

  [[nodiscard]] const Settings& settings() const { return m_library.settings(); }
  // Once the library is loaded. Saves them as well, and does what follows from what has changed:
  // taskbar, login item, hot key.
  void changeSettings(const Settings& settings);
  // Makes this the key of quick search.
  void changeHotKey(const HotKey& key);

  // --- The sync; see LibrarySync.

  [[nodiscard]] const SyncStatus& syncStatus() const { return m_sync.syncStatus(); }
  [[nodiscard]] const std::optional<QDateTime>& lastSyncDate() const {
    return m_sync.lastSyncDate();
  }
  [[nodiscard]] const std::optional<SyncMetadata>& syncMetadata() const {
    return m_sync.syncMetadata();
  }
  void performSync() { m_sync.performSync(); }
  // As soon as the main thread is free, unless sync has been turned off by then.
  void syncIfEnabled();

  // --- Expansion; see ExpansionService, ExpansionCoordinator.

  [[nodiscard]] bool isPaused() const { return m_expansion.isPaused(); }
  [[nodiscard]] bool hasAccessibilityPermission() const {
    return m_expansion.hasAccessibilityPermission();
  }
  // Why the permission is missing, in one line for the user; empty where it is there.
  [[nodiscard]] QString reasonForMissingPermission() const {
    return m_expansionServices.permission.reasonForMissing();
  }
  // Whether the user can be led to where it is granted, and what they can do where they cannot.
  [[nodiscard]] bool permissionCanBeAskedFor() const {
    return m_expansionServices.permission.canBeAskedFor();
  }
  [[nodiscard]] QString remedyForMissingPermission() const {
    return m_expansionServices.permission.remedy();
  }
  // The application that keeps expansion from working, by having the keyboard for itself.
  [[nodiscard]] const std::optional<QString>& secureInputAppName() const {
    return m_expansionServices.secureInputWatch.secureInputAppName();
  }
  // The key of quick search, where it is another program's.
  [[nodiscard]] const std::optional<TakenHotKey>& takenHotKey() const {
    return m_expansion.takenHotKey();
  }
  [[nodiscard]] const std::optional<PendingExpansion>& pendingExpansion() const {
    return m_coordinator.pendingExpansion();
  }
  [[nodiscard]] bool showingFillInForm() const { return m_coordinator.showingFillInForm(); }
  [[nodiscard]] qsizetype pendingMatchLength() const { return m_coordinator.pendingMatchLength(); }

  void startExpansion() { m_expansion.startExpansion(); }
  void stopExpansion() { m_expansion.stopExpansion(); }
  void togglePause() { m_expansion.togglePause(); }
  void refreshAccessibilityPermission() { m_expansion.refreshAccessibilityPermission(); }
  void requestAccessibilityPermission() { m_expansion.requestAccessibilityPermission(); }

  void handlePotentialTrigger(const QString& buffer) { m_expansion.handlePotentialTrigger(buffer); }
  void submitFillIn(const QMap<QString, QString>& values) { m_coordinator.submitFillIn(values); }
  void cancelFillIn() { m_coordinator.cancelFillIn(); }
  void toggleQuickSearch() { m_coordinator.toggleQuickSearch(); }
  void expandFromQuickSearch(const Snippet& snippet,
                             const std::optional<RunningApplication>& targetApp) {
    m_coordinator.expandFromQuickSearch(snippet, targetApp);
  }

  // --- The presence on the desktop; see DesktopPresence.

  // Makes ahead of need what the first expansion would have to wait for.
  void warmUp() { m_expansion.warmUp(); }

  void becomeRegularIfHidden() { m_presence.becomeRegularIfHidden(); }
  void restoreAccessoryPolicyIfNoWindows() { m_presence.restoreAccessoryPolicyIfNoWindows(); }

 Q_SIGNALS:
  void hasLoadedDataChanged();
  void isLibraryLoadedChanged();
  void snippetsChanged();
  void foldersChanged();
  void globalVariablesChanged();
  void settingsChanged();
  void recentImportsChanged();
  void syncStatusChanged();
  void lastSyncDateChanged();
  void syncMetadataChanged();
  void isPausedChanged();
  void hasAccessibilityPermissionChanged();
  void secureInputAppNameChanged();
  void takenHotKeyChanged();
  void pendingExpansionChanged();
  void showingFillInFormChanged();
  void pendingMatchLengthChanged();

 private:
  void handOnSignals();
  void adoptLibrary(const LoadedLibrary& loaded);
  void adoptSnippetsAndFolders(const LoadedLibrary& loaded);

  const ExpansionServices m_expansionServices;
  const LibraryServices m_libraryServices;
  Library m_library;
  LibrarySelection m_selection;
  LibrarySync m_sync;
  LibrarySaver m_saver;
  LibraryOperations m_operations;
  LibraryLoader m_loader;
  DesktopPresence m_presence;
  ExpansionCoordinator m_coordinator;
  ExpansionService m_expansion;
  bool m_hasLoadedData = false;
};

}  // namespace zarvy
