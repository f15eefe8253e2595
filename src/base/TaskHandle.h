#pragma once

#include <atomic>
#include <memory>

namespace zarvy {

// Names a scheduled task so that it can be cancelled. A copy names the same task; dropping every
// copy leaves the task running.
class TaskHandle {
 public:
  TaskHandle() = default;

  // A handle of a task that has yet to be scheduled.
  [[nodiscard]] static TaskHandle make() {
    TaskHandle handle;
    handle.m_cancelled = std::make_shared<std::atomic<bool>>(false);
    return handle;
  }

  // The task does not run again. Any thread; a task that is running just now is not interrupted.
  void cancel() {
    if (m_cancelled) m_cancelled->store(true);
  }

  // True for a default-made handle, which names no task.
  [[nodiscard]] bool isCancelled() const { return !m_cancelled || m_cancelled->load(); }

 private:
  std::shared_ptr<std::atomic<bool>> m_cancelled;
};

}  // namespace zarvy
