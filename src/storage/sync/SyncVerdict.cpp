#include "storage/sync/SyncVerdict.h"

namespace zarvy {

SyncVerdict compare(const std::optional<SyncMetadata>& local,
                    const std::optional<SyncMetadata>& cloud) {
  if (!local && !cloud) return SyncVerdict::inStep;
  if (!local) return SyncVerdict::cloudNewer;
  if (!cloud) return SyncVerdict::localNewer;
  if (local->dataVersion > cloud->dataVersion) return SyncVerdict::localNewer;
  if (local->dataVersion < cloud->dataVersion) return SyncVerdict::cloudNewer;
  return local->deviceID == cloud->deviceID ? SyncVerdict::inStep : SyncVerdict::conflict;
}

SettledConflict settleConflict(const std::optional<SyncMetadata>& local,
                               const std::optional<SyncMetadata>& cloud) {
  if (!local || !cloud) {
    return {SyncVerdict::localNewer,
            u"iCloud sync: Conflict with missing metadata, uploading local data"};
  }
  if (cloud->lastSyncDate > local->lastSyncDate) {
    return {SyncVerdict::cloudNewer, u"iCloud sync: Conflict resolved - cloud is newer"};
  }
  return {SyncVerdict::localNewer, u"iCloud sync: Conflict resolved - local is newer or same"};
}

}  // namespace zarvy
