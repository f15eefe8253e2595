#include "app/LibraryLoader.h"

#include <utility>

#include "core/model/FirstRunContent.h"

namespace zarvy {

LibraryLoader::LibraryLoader(DocumentQueue& documents, Scheduler& scheduler, const Clock& clock)
    : m_documents(documents), m_scheduler(scheduler), m_clock(clock) {}

void LibraryLoader::load(Callback onLoaded) {
  m_documents.post([this, onLoaded = std::move(onLoaded)](const DataStore& store) {
    m_scheduler.post([this, onLoaded, library = read(store)] { finish(library, onLoaded); });
  });
}

Library LibraryLoader::read(const DataStore& store) {
  // Each in its own statement: the order of reading is the order of the lines that failures print.
  Library library;
  library.snippets = store.loadSnippets();
  library.folders = store.loadFolders();
  library.settings = store.loadSettings();
  library.globalVariables = store.loadGlobalVariables();
  library.counters = store.loadCounters();
  library.fieldDefaults = store.loadFieldDefaults();
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
