#pragma once

#include <optional>

#include <QDateTime>
#include <QObject>

#include "base/Clock.h"
#include "base/Scheduler.h"
#include "core/TextExpansionEngine.h"
#include "core/model/SyncMetadata.h"
#include "storage/DocumentQueue.h"
#include "storage/sync/SyncStatus.h"
#include "storage/sync/iCloudSyncService.h"

namespace zarvy {

class Library;

// How the library stands to the file that several machines share, and the taking over of what comes
// from it. A signal is raised only when a value has really changed. Main thread.
class LibrarySync final : public QObject {
  Q_OBJECT

 public:
  // All of it outlives this object; all but `library` what it posts, too.
  LibrarySync(Library& library, TextExpansionEngine& engine, const iCloudSyncService& service,
              DocumentQueue& documents, Scheduler& scheduler, const Clock& clock);

  [[nodiscard]] const SyncStatus& syncStatus() const { return m_status; }

  // When the library was last the same as the shared file; absent before the first time.
  [[nodiscard]] const std::optional<QDateTime>& lastSyncDate() const { return m_lastSyncDate; }

  // Which generation of the library this is; absent before the first sync or upload.
  [[nodiscard]] const std::optional<SyncMetadata>& syncMetadata() const { return m_metadata; }
  void setSyncMetadata(const std::optional<SyncMetadata>& metadata);

  // Compares the library with the shared file, and lets whichever is ahead replace the other.
  // Returns at once; what comes of it is taken over when it is there, whatever was edited since.
  void performSync();

  // The library was uploaded as this generation.
  void adoptUpload(const SyncMetadata& metadata);

 Q_SIGNALS:
  void syncStatusChanged();
  void lastSyncDateChanged();
  void syncMetadataChanged();

 private:
  void applySyncResult(const SyncResult& result);
  void saveSnippetsAndFolders();
  void setStatus(const SyncStatus& status);
  void setLastSyncDate(const std::optional<QDateTime>& date);

  Library& m_library;
  TextExpansionEngine& m_engine;
  const iCloudSyncService& m_service;
  DocumentQueue& m_documents;
  Scheduler& m_scheduler;
  const Clock& m_clock;
  SyncStatus m_status;
  std::optional<QDateTime> m_lastSyncDate;
  std::optional<SyncMetadata> m_metadata;
};

}  // namespace zarvy
