#pragma once

#include <functional>

#include "app/Library.h"
#include "base/Clock.h"
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
  using Callback = std::function<void(const Library&)>;

  LibraryLoader(DocumentQueue& documents, const LoadedStores& stores, Scheduler& scheduler,
                const Clock& clock);

  // Returns at once; `onLoaded` is called once, on the main thread, when the stores have theirs
  // too. Where the documents hold neither a snippet nor a folder the library gets the first-run
  // content, which is saved then.
  void load(Callback onLoaded);

 private:
  [[nodiscard]] Library read(const DataStore& store);
  void finish(Library library, const Callback& onLoaded);
  void save(const Library& library);

  DocumentQueue& m_documents;
  const LoadedStores m_stores;
  Scheduler& m_scheduler;
  const Clock& m_clock;
};

}  // namespace zarvy
