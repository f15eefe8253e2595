#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "base/Scheduler.h"
#include "base/TaskQueue.h"
#include "storage/DataStore.h"

namespace zarvy {

// The one way to the documents while the program runs: work on them is done one piece after the
// other, in the order in which it was handed over, away from the caller's thread. Any thread.
class DocumentQueue {
 public:
  using Work = std::function<void(const DataStore&)>;

  // From then on `store` and `queue` are used through this object alone. Both outlive the work that
  // is handed over, and so does what this work names: their owner drains the queue ahead of all.
  DocumentQueue(const DataStore& store, SerialQueue& queue) : m_store(store), m_queue(queue) {}

  // Returns at once. What `work` holds is a copy, so that later changes do not reach it.
  void post(Work work) {
    m_queue.post([&store = m_store, work = std::move(work)] { work(store); });
  }

 private:
  const DataStore& m_store;
  SerialQueue& m_queue;
};

// The one save of a store that waits for its changes to come to rest. Its owner sees to it that
// only one thread at a time is in here; what waits when the process ends is lost.
class DebouncedSave {
 public:
  // Both outlive the saves that are scheduled.
  DebouncedSave(DocumentQueue& documents, Scheduler& scheduler, std::chrono::milliseconds delay)
      : m_documents(documents), m_scheduler(scheduler), m_delay(delay) {}

  // Hands `save` to the documents once the delay has passed, unless another comes before.
  void schedule(DocumentQueue::Work save) {
    withdraw();
    m_waiting = std::make_shared<const DocumentQueue::Work>(std::move(save));
    m_task = m_scheduler.postAfter(m_delay,
                                   [&documents = m_documents, waiting = std::weak_ptr(m_waiting)] {
                                     if (const auto latest = waiting.lock())
                                       documents.post(*latest);
                                   });
  }

  // Drops the save that waits, and with it the copy of the data that it holds. Called ahead of a
  // change, it spares large data that are shared until changed from being copied for nothing.
  void withdraw() {
    m_task.cancel();
    m_waiting.reset();
  }

 private:
  DocumentQueue& m_documents;
  Scheduler& m_scheduler;
  const std::chrono::milliseconds m_delay;
  TaskHandle m_task;
  std::shared_ptr<const DocumentQueue::Work> m_waiting;  // or the latest that was handed over
};

}  // namespace zarvy
