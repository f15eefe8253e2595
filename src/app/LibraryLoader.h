#pragma once

#include <functional>

#include "app/Library.h"
#include "base/Clock.h"
#include "base/Scheduler.h"
#include "storage/DocumentQueue.h"

namespace zarvy {

// Reads the user's library at start. Main thread; the reading happens on the documents' queue.
// Everything given must outlive the work on that queue.
class LibraryLoader {
 public:
  using Callback = std::function<void(const Library&)>;

  LibraryLoader(DocumentQueue& documents, Scheduler& scheduler, const Clock& clock);

  // Returns at once; `onLoaded` is called once, on the main thread. Where the documents hold
  // neither a snippet nor a folder the library gets the first-run content, which is saved then.
  void load(Callback onLoaded);

 private:
  [[nodiscard]] static Library read(const DataStore& store);
  void finish(Library library, const Callback& onLoaded);
  void save(const Library& library);

  DocumentQueue& m_documents;
  Scheduler& m_scheduler;
  const Clock& m_clock;
};

}  // namespace zarvy
