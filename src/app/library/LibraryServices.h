#pragma once

#include <QByteArray>

#include "app/library/LibraryLoader.h"
#include "base/Clock.h"
#include "storage/DocumentQueue.h"
#include "storage/sync/iCloudSyncService.h"

namespace zarvy {

// What the library takes. All of it outlives AppState and what AppState posts.
struct LibraryServices {
  DocumentQueue& documents;
  LoadedStores stores;
  const iCloudSyncService& cloudSync;
  const Clock& clock;
  QByteArray locale;  // the user's, as ICU names it
};

}  // namespace zarvy
