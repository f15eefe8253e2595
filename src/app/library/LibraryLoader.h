#pragma once

#include <functional>
#include <optional>

#include <QByteArray>
#include <QList>

#include "base/Clock.h"
#include "base/Scheduler.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/ImportBatch.h"
#include "core/model/Settings.h"
#include "core/model/Snippet.h"
#include "core/model/SyncMetadata.h"
#include "stats/StatsStore.h"
#include "storage/CounterStore.h"
#include "storage/DocumentQueue.h"
#include "storage/FieldDefaultsStore.h"
#include "storage/sync/iCloudSyncService.h"

namespace zarvy {

// What the program reads from its documents at start, beside what its stores keep for themselves.
struct LoadedLibrary {
  QList<Snippet> snippets;
  QList<Folder> folders;
  Settings settings;
  QList<GlobalVariable> globalVariables;
  QList<ImportBatch> importBatches = {};          // newest first
  std::optional<SyncMetadata> syncMetadata = {};  // of the last sync; absent before the first
};

// The stores that keep documents of their own in memory.
struct LoadedStores {
  CounterStore& counters;
  StatsStore& stats;
  FieldDefaultsStore& fieldDefaults;
};

// What the library takes. All of it outlives AppState and what AppState posts.
struct LibraryServices {
  DocumentQueue& documents;
  LoadedStores stores;
  const iCloudSyncService& cloudSync;
  const Clock& clock;
  QByteArray locale;  // the user's, as ICU names it
};

// Reads all documents at start. Main thread; the reading happens on the documents' queue.
// Everything given must outlive the work on that queue.
class LibraryLoader {
 public:
  using Callback = std::function<void(const LoadedLibrary&)>;

  LibraryLoader(DocumentQueue& documents, const LoadedStores& stores, Scheduler& scheduler)
      : m_documents(documents), m_stores(stores), m_scheduler(scheduler) {}

  // Returns at once; `onLoaded` is called once, on the main thread, when the stores have theirs
  // too.
  void load(Callback onLoaded);

 private:
  [[nodiscard]] static LoadedLibrary read(const DataStore& store, const LoadedStores& stores);

  DocumentQueue& m_documents;
  const LoadedStores m_stores;
  Scheduler& m_scheduler;
};

}  // namespace zarvy
