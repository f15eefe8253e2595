#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#include "base/TaskQueue.h"

namespace zarvy {

// A queue whose tasks run when the test says so, on the thread that says so.
template <typename Queue>
class ManualQueue final : public Queue {
 public:
  using Task = TaskQueue::Task;

  void post(Task task) override {
    const std::scoped_lock guard(m_lock);
    m_tasks.push_back(std::move(task));
  }

  // Runs everything that waits, and what that work posts here.
  void drain() override {
    while (runNext()) {
    }
  }

  // Runs the oldest task. False where none waits.
  bool runNext() {
    std::optional<Task> task;
    {
      const std::scoped_lock guard(m_lock);
      if (m_tasks.empty()) return false;
      task = std::move(m_tasks.front());
      m_tasks.pop_front();
    }
    (*task)();
    return true;
  }

  [[nodiscard]] std::size_t pendingCount() const {
    const std::scoped_lock guard(m_lock);
    return m_tasks.size();
  }

 private:
  mutable std::mutex m_lock;
  std::deque<Task> m_tasks;
};

using ManualSerialQueue = ManualQueue<SerialQueue>;
using ManualWorkerPool = ManualQueue<WorkerPool>;

}  // namespace zarvy
