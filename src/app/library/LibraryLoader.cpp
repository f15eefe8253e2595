#include "app/library/LibraryLoader.h"

#include <utility>

namespace zarvy {

void LibraryLoader::load(Callback onLoaded) {
  m_documents.post([stores = m_stores, &scheduler = m_scheduler,
                    onLoaded = std::move(onLoaded)](const DataStore& store) {
    scheduler.post([onLoaded, library = read(store, stores)] { onLoaded(library); });
  });
}

LoadedLibrary LibraryLoader::read(const DataStore& store, const LoadedStores& stores) {
  store.makePrivate();
  store.removeUnfinishedSaves();
  // Each in its own statement: the order of reading is the order of the lines that failures print.
  LoadedLibrary library;
  library.snippets = store.loadSnippets();
  library.folders = store.loadFolders();
  library.settings = store.loadSettings();
  library.importBatches = store.loadImportBatches();
  library.syncMetadata = store.loadSyncMetadata();
  library.globalVariables = store.loadGlobalVariables();
  stores.counters.replaceAll(store.loadCounters());
  stores.stats.loadFromDisk(store);
  stores.fieldDefaults.replaceAll(store.loadFieldDefaults());
  return library;
}

}  // namespace zarvy
