#include "app/LibraryLoader.h"

#include <utility>

#include "core/model/FirstRunContent.h"

namespace zarvy {

LibraryLoader::LibraryLoader(const DataStore& store, SerialQueue& storageQueue,
                             Scheduler& scheduler, const Clock& clock)
    : m_store(store), m_storageQueue(storageQueue), m_scheduler(scheduler), m_clock(clock) {}

void LibraryLoader::load(Callback onLoaded) {
  m_storageQueue.post([this, onLoaded = std::move(onLoaded)] {
    m_scheduler.post([this, onLoaded, library = read(m_store)] { finish(library, onLoaded); });
  });
}

Library LibraryLoader::read(const DataStore& store) {
  // Each in its own statement: the order of reading is the order of the lines that failures print.
  Library library;
  library.snippets = store.loadSnippets();
  library.folders = store.loadFolders();
  library.settings = store.loadSettings();
  library.globalVariables = store.loadGlobalVariables();
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
  m_storageQueue.post([&store = m_store, library] {
    store.saveSnippets(library.snippets);
    store.saveFolders(library.folders);
  });
}

}  // namespace zarvy
