#pragma once

#include <QList>
#include <QObject>

#include "app/expansion/ExpansionCoordinator.h"
#include "app/expansion/ExpansionService.h"
#include "app/library/Library.h"
#include "app/library/LibraryLoader.h"
#include "app/library/LibraryOperations.h"
#include "app/library/LibrarySaver.h"
#include "app/library/LibrarySelection.h"
#include "app/library/LibrarySync.h"
#include "app/library/SnippetFilter.h"
#include "app/presence/DesktopPresence.h"

namespace zarvy {

// The state that all screens share: it makes the parts, loads the library at start, and does what
// concerns several of them. A screen takes the parts that it uses, each of which tells of its own
// changes. Main thread.
class AppState final : public QObject {
  Q_OBJECT

 public:
  AppState(const LibraryServices& library, const CoordinatorServices& coordinator,
           const ExpansionServices& expansion, const PresenceServices& presence);

  // Reads all documents, then hands the library to the engine and starts expansion, if it may run.
  // Returns at once; does nothing but the first time.
  void loadData();

  // True from the first loadData() on; says nothing of the load's having come to its end, as
  // Library::isLoaded() does.
  [[nodiscard]] bool hasLoadedData() const { return m_hasLoadedData; }

  [[nodiscard]] const Library& library() const { return m_library; }
  [[nodiscard]] LibraryOperations& operations() { return m_operations; }
  [[nodiscard]] LibrarySaver& saver() { return m_saver; }
  [[nodiscard]] LibrarySelection& selection() { return m_selection; }
  [[nodiscard]] LibrarySync& sync() { return m_sync; }
  [[nodiscard]] ExpansionCoordinator& coordinator() { return m_coordinator; }
  [[nodiscard]] ExpansionService& expansion() { return m_expansion; }
  [[nodiscard]] DesktopPresence& presence() { return m_presence; }

  // What of the library the selected folder and the search text leave, in stored order.
  [[nodiscard]] SnippetList filteredSnippets();

  // Once the library is loaded. Saves them as well, and does what follows from what has changed:
  // taskbar, login item, hot key.
  void changeSettings(const Settings& settings);
  // Makes this the key of quick search.
  void changeHotKey(const HotKey& key);

  // As soon as the main thread is free, unless sync has been turned off by then.
  void syncIfEnabled();

 Q_SIGNALS:
  void hasLoadedDataChanged();

 private:
  void adoptLibrary(const LoadedLibrary& loaded);
  void adoptSnippetsAndFolders(const LoadedLibrary& loaded);

  TextExpansionEngine& m_engine;
  Scheduler& m_scheduler;
  const LibraryServices m_libraryServices;
  Library m_library;
  LibrarySelection m_selection;
  SnippetFilter m_filter;
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
