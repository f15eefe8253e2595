#pragma once

#include <mutex>
#include <optional>

#include <QList>
#include <QString>

#include "base/Clock.h"
#include "base/LineOutput.h"
#include "base/Sleeper.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"
#include "platform/CloudDrive.h"
#include "platform/UserDefaults.h"
#include "storage/sync/SyncResult.h"
#include "storage/sync/SyncVerdict.h"
#include "storage/sync/SyncedData.h"

namespace zarvy {

// Keeps the library of several machines alike through one file in the user's cloud drive. The drive
// is taken for an ordinary folder; what carries it from one machine to the other is none of its
// business. Nothing is merged: the side that wins replaces the other's whole library.
//
// sync(), upload() and download() do their work before they return, take no lock and may take as
// long as a slow disk does; sync() and download() wait 0.3 s besides. All of them run on one serial
// queue of the service's own, never on the main thread: a caller posts them there with copies of
// the data, and posts what comes of them back through Scheduler. Nobody hears of failures but
// through SyncResult::status; each prints one line.
class iCloudSyncService {  // NOLINT(readability-identifier-naming)
 public:
  // All of them outlive the service.
  iCloudSyncService(const CloudDrive& drive, UserDefaults& defaults, const Clock& clock,
                    Sleeper& sleeper, LineOutput& output);

  // Compares the library with the shared file, and either replaces the file or gives back what is
  // to replace the library. `localMetadata` is that of the last sync or upload; absent before the
  // first.
  [[nodiscard]] SyncResult sync(const QList<Snippet>& snippets, const QList<Folder>& folders,
                                const QList<GlobalVariable>& globalVariables,
                                const std::optional<SyncMetadata>& localMetadata) const;

  // Replaces the shared file. Without `metadata` it becomes the first generation. Does not make the
  // folder: only sync() does.
  void upload(const QList<Snippet>& snippets, const QList<Folder>& folders,
              const QList<GlobalVariable>& globalVariables,
              const std::optional<SyncMetadata>& metadata) const;

  // The shared file's content; absent where there is none that can be read.
  [[nodiscard]] std::optional<SyncedData> download() const;

  // The identity of this device, made at the first use. Any thread.
  [[nodiscard]] QString deviceID() const;

  // What an upload by this device that follows `current` carries: made now, one generation on, or
  // the first where `current` is absent. Any thread.
  [[nodiscard]] SyncMetadata nextMetadata(const std::optional<SyncMetadata>& current) const;

 private:
  [[nodiscard]] std::optional<QString> findFolder() const;
  [[nodiscard]] std::optional<QString> findFolderIfSignedIn() const;
  void printWhereTheDriveWasLookedFor() const;
  [[nodiscard]] std::optional<QString> prepareFolder(const QString& folder) const;
  [[nodiscard]] SyncVerdict verdictOn(const std::optional<SyncMetadata>& local,
                                      const std::optional<SyncedData>& cloud) const;

  const CloudDrive& m_drive;
  UserDefaults& m_defaults;
  const Clock& m_clock;
  Sleeper& m_sleeper;
  LineOutput& m_output;
  mutable std::mutex m_identityLock;  // held while an identity is read or made
};

}  // namespace zarvy
