#pragma once

#include <chrono>
#include <string>
#include <utility>

#include "base/TaskQueue.h"
#include "base/TaskThreads.h"

namespace zarvy {

// A pool for tasks that spend most of their time asleep: it has a thread for every task that runs,
// so that none waits for another. Its end waits for the tasks posted so far.
class ThreadWorkerPool final : public WorkerPool {
 public:
  explicit ThreadWorkerPool(std::string name) : m_threads(std::move(name), maxThreads) {}

  void post(Task task) override { m_threads.post(std::move(task)); }
  void drain() override { m_threads.drain(); }

  // The same, but gives up at `deadline`; false then.
  [[nodiscard]] bool drainUntil(std::chrono::steady_clock::time_point deadline) {
    return m_threads.drainUntil(deadline);
  }

 private:
  // Far above what one person's typing sets going; a bound against a runaway caller.
  static constexpr std::size_t maxThreads = 64;

  TaskThreads m_threads;
};

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
