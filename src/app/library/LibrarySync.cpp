#include "app/library/LibrarySync.h"

#include <QPointer>

#include "app/library/AssignIfChanged.h"
#include "app/library/Library.h"

namespace zarvy {

LibrarySync::LibrarySync(Library& library, TextExpansionEngine& engine,
                         const iCloudSyncService& service, DocumentQueue& documents,
                         Scheduler& scheduler, const Clock& clock)
    : m_library(library),
      m_engine(engine),
      m_service(service),
      m_documents(documents),
      m_scheduler(scheduler),
      m_clock(clock) {}

void LibrarySync::performSync() {
  setStatus(SyncStatus::syncing());
  m_service.sync(m_library.snippets().toList(), m_library.folders(), m_library.globalVariables(),
                 m_metadata,
                 [weak = QPointer(this), &scheduler = m_scheduler](const SyncResult& result) {
                   scheduler.post([weak, result] {
                     if (weak) weak->applySyncResult(result);
                   });
                 });
}

void LibrarySync::applySyncResult(const SyncResult& result) {
  setStatus(result.status);
  if (result.snippets || result.folders || result.globalVariables) {
    m_documents.post([](const DataStore& store) { store.keepBackupBeforeSync(); });
  }
  if (result.snippets) {
    m_library.setSnippets(*result.snippets);
    m_engine.setSnippets(m_library.snippets());
  }
  if (result.folders) m_library.setFolders(*result.folders);
  if (result.globalVariables) {
    m_library.setGlobalVariables(*result.globalVariables);
    m_engine.setGlobalVariables(m_library.globalVariables());
    m_documents.post([variables = m_library.globalVariables()](const DataStore& store) {
      store.saveGlobalVariables(variables);
    });
  }
  if (result.metadata) {
    setSyncMetadata(result.metadata);
    m_documents.post([metadata = *result.metadata](const DataStore& store) {
      store.saveSyncMetadata(metadata);
    });
  }
  if (result.snippets || result.folders) {
    m_scheduler.post([weak = QPointer(this)] {
      if (weak) weak->saveSnippetsAndFolders();
    });
  }
  if (result.status.kind() == SyncStatus::Kind::success) setLastSyncDate(result.status.date());
}

// Those of now, which may be later ones than the sync brought.
void LibrarySync::saveSnippetsAndFolders() {
  m_documents.post(
      [snippets = m_library.snippets(), folders = m_library.folders()](const DataStore& store) {
        store.saveSnippets(snippets.toList());
        store.saveFolders(folders);
      });
}

void LibrarySync::adoptUpload(const SyncMetadata& metadata) {
  setSyncMetadata(metadata);
  setLastSyncDate(m_clock.now());
}

void LibrarySync::setSyncMetadata(const std::optional<SyncMetadata>& metadata) {
  if (assignIfChanged(m_metadata, metadata)) Q_EMIT syncMetadataChanged();
}

void LibrarySync::setStatus(const SyncStatus& status) {
  if (assignIfChanged(m_status, status)) Q_EMIT syncStatusChanged();
}

void LibrarySync::setLastSyncDate(const std::optional<QDateTime>& date) {
  if (assignIfChanged(m_lastSyncDate, date)) Q_EMIT lastSyncDateChanged();
}

}  // namespace zarvy
