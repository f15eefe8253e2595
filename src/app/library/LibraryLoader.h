#pragma once

#include <functional>

#include "app/library/LoadedLibrary.h"
#include "base/Scheduler.h"
#include "stats/StatsStore.h"
#include "storage/CounterStore.h"
#include "storage/DocumentQueue.h"
#include "storage/FieldDefaultsStore.h"

namespace zarvy {

// The stores that keep documents of their own in memory.
struct LoadedStores {
  CounterStore& counters;
  StatsStore& stats;
  FieldDefaultsStore& fieldDefaults;
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
