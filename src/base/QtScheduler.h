#pragma once

#include <deque>
#include <mutex>

#include <QObject>
#include <QSocketNotifier>

#include "base/Scheduler.h"
#include "base/posix/WakeUp.h"

namespace zarvy {

// The main thread's scheduler on Qt's event loop. Made and destroyed on the main thread, within
// the life of the QCoreApplication. Threads that post must have ended before the scheduler does;
// tasks that have not run by then never run.
class QtScheduler final : public Scheduler {
 public:
  // Throws std::system_error where the process has no file descriptor left.
  QtScheduler();
  ~QtScheduler() override = default;

  QtScheduler(const QtScheduler&) = delete;
  QtScheduler& operator=(const QtScheduler&) = delete;

  void post(Task task) override;
  TaskHandle postAfter(std::chrono::milliseconds delay, Task task) override;
  TaskHandle repeatEvery(std::chrono::milliseconds interval, Task task) override;

 private:
  void runPendingTasks();
  [[nodiscard]] std::size_t pendingCount();
  [[nodiscard]] Task takeNext();

  std::mutex m_mutex;  // guards m_tasks and keeps m_wakeUp in step with it
  std::deque<Task> m_tasks;
  // Raised exactly while m_tasks is not empty, so that a nested event loop goes on where the outer
  // one stopped.
  WakeUp m_wakeUp;
  QSocketNotifier m_notifier;
  QObject m_timers;  // parent of the running timers, and the context that ends them
};

}  // namespace zarvy
