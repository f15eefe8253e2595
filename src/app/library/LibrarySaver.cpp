#include "app/library/LibrarySaver.h"

#include <utility>

#include <QPointer>

#include "app/library/Library.h"
#include "app/library/LibrarySync.h"

namespace zarvy {

namespace {

// Gathers a burst of changes, such as typing in an editor, into one save.
constexpr std::chrono::milliseconds debounce{50};

}  // namespace

LibrarySaver::LibrarySaver(const Library& library, LibrarySync& sync, TextExpansionEngine& engine,
                           const iCloudSyncService& service, DocumentQueue& documents,
                           Scheduler& scheduler)
    : m_library(library),
      m_sync(sync),
      m_engine(engine),
      m_service(service),
      m_documents(documents),
      m_scheduler(scheduler),
      m_saveTask(documents, scheduler, debounce) {}

void LibrarySaver::scheduleSave() {
  if (!m_library.isLoaded()) return;
  m_saveTask.schedule(saving(snapshot(), writeSnippetsAndFolders));
}

void LibrarySaver::saveGlobalVariablesAndUpload() {
  if (!m_library.isLoaded()) return;
  m_engine.setGlobalVariables(m_library.globalVariables());
  m_documents.post(saving(snapshot(), writeGlobalVariables));
}

void LibrarySaver::writeSnippetsAndFolders(const DataStore& store, const Snapshot& snapshot) {
  store.saveSnippets(snapshot.snippets.toList());
  store.saveFolders(snapshot.folders);
}

void LibrarySaver::writeGlobalVariables(const DataStore& store, const Snapshot& snapshot) {
  store.saveGlobalVariables(snapshot.globalVariables);
}

std::shared_ptr<const LibrarySaver::Snapshot> LibrarySaver::snapshot() const {
  return std::make_shared<const Snapshot>(
      Snapshot{m_library.snippets(), m_library.folders(), m_library.globalVariables(),
               m_library.settings().iCloudSyncEnabled, m_sync.syncMetadata()});
}

// One step after the other, each where it belongs: documents, shared file, documents, main thread.
DocumentQueue::Work LibrarySaver::saving(std::shared_ptr<const Snapshot> snapshot, Write write) {
  return [snapshot = std::move(snapshot), write, &service = m_service, &documents = m_documents,
          announce = announcing()](const DataStore& store) {
    write(store, *snapshot);
    if (!snapshot->iCloudSyncEnabled) return;
    const SyncMetadata next = service.nextMetadata(snapshot->metadata);
    service.upload(snapshot->snippets.toList(), snapshot->folders, snapshot->globalVariables, next,
                   [&documents, next, announce] {
                     documents.post([next, announce](const DataStore& afterwards) {
                       afterwards.saveSyncMetadata(next);
                       announce(next);
                     });
                   });
  };
}

// Any thread.
std::function<void(const SyncMetadata&)> LibrarySaver::announcing() {
  return [weak = QPointer(&m_sync), &scheduler = m_scheduler](const SyncMetadata& uploaded) {
    scheduler.post([weak, uploaded] {
      if (weak) weak->adoptUpload(uploaded);
    });
  };
}

}  // namespace zarvy
