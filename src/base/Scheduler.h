#pragma once

#include <atomic>
#include <chrono>
#include <functional>
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

// Runs work on the main thread. Every operation may be called from any thread; every task runs on
// the main thread, never inside the call that hands it over.
class Scheduler {
 public:
  using Task = std::function<void()>;

  virtual ~Scheduler() = default;

  // Runs `task` as soon as the main thread is free; tasks posted from one thread keep their order.
  virtual void post(Task task) = 0;

  // Runs `task` once, `delay` from now. The handle may be dropped: that cancels nothing.
  virtual TaskHandle postAfter(std::chrono::milliseconds delay, Task task) = 0;

  // Runs `task` every `interval`, first one interval from now, until the handle is cancelled.
  virtual TaskHandle repeatEvery(std::chrono::milliseconds interval, Task task) = 0;
};

}  // namespace zarvy
