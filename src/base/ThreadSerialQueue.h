#pragma once

#include <chrono>
#include <string>
#include <utility>

#include "base/TaskQueue.h"
#include "base/TaskThreads.h"

namespace zarvy {

// A serial queue with a thread of its own. Its end waits for the tasks posted so far.
class ThreadSerialQueue final : public SerialQueue {
 public:
  explicit ThreadSerialQueue(std::string name) : m_threads(std::move(name), 1) {}

  void post(Task task) override { m_threads.post(std::move(task)); }
  void drain() override { m_threads.drain(); }

  // The same, but gives up at `deadline`; false then.
  [[nodiscard]] bool drainUntil(std::chrono::steady_clock::time_point deadline) {
    return m_threads.drainUntil(deadline);
  }

 private:
  TaskThreads m_threads;
};

}  // namespace zarvy
