#include "app/LibraryLoader.h"

#include <utility>

#include "core/model/FirstRunContent.h"

namespace zarvy {

LibraryLoader::LibraryLoader(DocumentQueue& documents, const LoadedStores& stores,
                             Scheduler& scheduler, const Clock& clock)
    : m_documents(documents), m_stores(stores), m_scheduler(scheduler), m_clock(clock) {}

void LibraryLoader::load(Callback onLoaded) {
  m_documents.post([this, onLoaded = std::move(onLoaded)](const DataStore& store) {
    m_scheduler.post([this, onLoaded, library = read(store)] { finish(library, onLoaded); });
  });
}

Library LibraryLoader::read(const DataStore& store) {
  store.removeUnfinishedSaves();
  // Each in its own statement: the order of reading is the order of the lines that failures print.
  Library library;
  library.snippets = store.loadSnippets();
  library.folders = store.loadFolders();
  library.settings = store.loadSettings();
  library.importBatches = store.loadImportBatches();
  library.syncMetadata = store.loadSyncMetadata();
  library.globalVariables = store.loadGlobalVariables();
  m_stores.counters.replaceAll(store.loadCounters());
  m_stores.stats.loadFromDisk(store);
  m_stores.fieldDefaults.replaceAll(store.loadFieldDefaults());
  return library;
}

void LibraryLoader::finish(Library library, const Callback& onLoaded) {
  if (library.snippets.isEmpty() && library.folders.isEmpty()) {
    const FirstRunContent content = FirstRunContent::make(m_clock);
    library.snippets = content.snippets;
    library.folders = content.folders;
    save(library);
  }
  onLoaded(library);
}

void LibraryLoader::save(const Library& library) {
  m_documents.post([library](const DataStore& store) {
    store.saveSnippets(library.snippets);
    store.saveFolders(library.folders);
  });
}

}  // namespace zarvy
