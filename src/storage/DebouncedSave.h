#pragma once

#include <chrono>
#include <utility>

#include "base/Scheduler.h"
#include "base/TaskHandle.h"
#include "storage/DocumentQueue.h"

namespace zarvy {

// The one save of a store that waits for its changes to come to rest. Its owner sees to it that
// only one thread at a time is in here; what waits when the process ends is lost.
class DebouncedSave {
 public:
  // Both outlive the saves that are scheduled.
  DebouncedSave(DocumentQueue& documents, Scheduler& scheduler, std::chrono::milliseconds delay)
      : m_documents(documents), m_scheduler(scheduler), m_delay(delay) {}

  // Hands `save` to the documents once the delay has passed, unless another comes before.
  void schedule(DocumentQueue::Work save) {
    m_task.cancel();
    m_task = m_scheduler.postAfter(
        m_delay, [&documents = m_documents, save = std::move(save)] { documents.post(save); });
  }

 private:
  DocumentQueue& m_documents;
  Scheduler& m_scheduler;
  const std::chrono::milliseconds m_delay;
  TaskHandle m_task;
};

}  // namespace zarvy
