#pragma once

#include <functional>
#include <utility>

#include "base/TaskQueue.h"
#include "storage/DataStore.h"

namespace zarvy {

// The one way to the documents while the program runs: work on them is done one piece after the
// other, in the order in which it was handed over, away from the caller's thread. Any thread.
class DocumentQueue {
 public:
  using Work = std::function<void(const DataStore&)>;

  // Both outlive this object, and only this object uses them from then on.
  DocumentQueue(const DataStore& store, SerialQueue& queue) : m_store(store), m_queue(queue) {}

  // Waits for the work that was handed over.
  ~DocumentQueue() { m_queue.drain(); }
  DocumentQueue(const DocumentQueue&) = delete;
  DocumentQueue& operator=(const DocumentQueue&) = delete;

  // Returns at once. What `work` holds is a copy, so that later changes do not reach it.
  void post(Work work) {
    m_queue.post([&store = m_store, work = std::move(work)] { work(store); });
  }

 private:
  const DataStore& m_store;
  SerialQueue& m_queue;
};

}  // namespace zarvy
