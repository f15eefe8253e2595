#pragma once

#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "storage/DataFolder.h"
#include "storage/DocumentQueue.h"

namespace zarvy {

// What a store with a debounced save stands on. Time and file work go on when the test says so.
class StoreHarness : public DataFolder {
 protected:
  // Lets what waits be written.
  void finish() {
    m_scheduler.advance(std::chrono::seconds(10));
    m_queue.drain();
  }

  // The saves that have reached the documents and wait there.
  [[nodiscard]] std::size_t waitingSaves() const { return m_queue.pendingCount(); }

  ManualSerialQueue m_queue;
  ManualScheduler m_scheduler;
  DocumentQueue m_documents{m_store, m_queue};
};

}  // namespace zarvy
