#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include <QList>
#include <QString>

#include "base/Clock.h"
#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "base/TaskQueue.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"
#include "platform/CloudDrive.h"
#include "platform/UserDefaults.h"
#include "storage/sync/SyncStatus.h"
#include "storage/sync/SyncVerdict.h"
#include "storage/sync/SyncedData.h"

namespace zarvy {

// Keeps the library of several machines alike through one file in the user's cloud drive. The drive
// is taken for an ordinary folder; what carries it from one machine to the other is none of its
// business. Nothing is merged: the side that wins replaces the other's whole library.
//
// Every operation returns at once and does its work on the service's queue, which may take as long
// as a slow disk does; the callbacks run there too. While a sync or a download waits for the file,
// the queue is free: an upload that was handed over in the meantime is done before the file is
// read. Failures are reported only through SyncResult::status; each prints one line.
class iCloudSyncService {  // NOLINT(readability-identifier-naming)
 public:
  using OnSynced = std::function<void(const SyncResult&)>;
  using OnUploaded = std::function<void()>;
  using OnDownloaded = std::function<void(const std::optional<SyncedData>&)>;

  // All of them outlive the service. The queue is the service's alone; the scheduler gives the time
  // to wait.
  iCloudSyncService(const CloudDrive& drive, UserDefaults& defaults, const Clock& clock,
                    Scheduler& scheduler, SerialQueue& queue, LineOutput& output);

  // Waits for the work that is on its queue. A sync or a download that waits for the file is
  // dropped without a callback. Main thread.
  ~iCloudSyncService();
  iCloudSyncService(const iCloudSyncService&) = delete;
  iCloudSyncService& operator=(const iCloudSyncService&) = delete;

  // Compares the library with the shared file 0.3 s from now, and either replaces the file or gives
  // back what is to replace the library. `localMetadata` is that of the last sync or upload; absent
  // before the first. Any thread.
  void sync(const QList<Snippet>& snippets, const QList<Folder>& folders,
            const QList<GlobalVariable>& globalVariables,
            const std::optional<SyncMetadata>& localMetadata, OnSynced onSynced) const;

  // Replaces the shared file. Without `metadata` it becomes the first generation. Does not make the
  // folder: only sync() does. `onUploaded` is called at the end, whatever came of it. Any thread.
  void upload(const QList<Snippet>& snippets, const QList<Folder>& folders,
              const QList<GlobalVariable>& globalVariables,
              const std::optional<SyncMetadata>& metadata, OnUploaded onUploaded = {}) const;

  // Gives the shared file's content as it is 0.3 s from now; absent if it cannot be
  // read. Any thread.
  void download(OnDownloaded onDownloaded) const;

  // The identity of this device, made at the first use. Reads a file: not on the main thread.
  [[nodiscard]] QString deviceID() const;

  // What an upload by this device that follows `current` carries: made now, one generation on, or
  // the first where `current` is absent. Reads a file: not on the main thread.
  [[nodiscard]] SyncMetadata nextMetadata(const std::optional<SyncMetadata>& current) const;

 private:
  struct Life {};

  // What is said before any file is looked at; absent where the drive and its folder are there.
  [[nodiscard]] std::optional<SyncStatus> prepare() const;
  [[nodiscard]] SyncResult settle(const SyncedLists& local,
                                  const std::optional<SyncMetadata>& localMetadata,
                                  const std::optional<SyncedData>& cloud) const;
  void write(const SyncedLists& lists, const std::optional<SyncMetadata>& metadata) const;
  void readAfterTheWait(OnDownloaded onDownloaded) const;
  [[nodiscard]] std::optional<SyncedData> read(const QString& folder) const;

  [[nodiscard]] std::optional<QString> findFolder() const;
  [[nodiscard]] std::optional<QString> findFolderIfSignedIn() const;
  void printWhereTheDriveWasLookedFor() const;
  [[nodiscard]] std::optional<QString> prepareFolder(const QString& folder) const;
  [[nodiscard]] SyncVerdict verdictOn(const std::optional<SyncMetadata>& local,
                                      const std::optional<SyncedData>& cloud) const;

  const CloudDrive& m_drive;
  UserDefaults& m_defaults;
  const Clock& m_clock;
  Scheduler& m_scheduler;
  SerialQueue& m_queue;
  LineOutput& m_output;
  std::shared_ptr<Life> m_life = std::make_shared<Life>();  // main-thread tasks hold it weakly
  mutable std::mutex m_identityLock;  // held while an identity is read or made
};

}  // namespace zarvy
