#include "base/QtScheduler.h"

#include <algorithm>
#include <utility>

#include <QTimer>

namespace zarvy {

QtScheduler::QtScheduler() : m_notifier(m_wakeUp.descriptor(), QSocketNotifier::Read) {
  QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                   [this] { runPendingTasks(); });
}

void QtScheduler::post(Task task) {
  const std::lock_guard lock(m_mutex);
  m_tasks.push_back(std::move(task));
  if (m_tasks.size() == 1) m_wakeUp.raise();
}

TaskHandle QtScheduler::postAfter(std::chrono::milliseconds delay, Task task) {
  using Clock = std::chrono::steady_clock;
  TaskHandle handle = TaskHandle::make();
  post([this, handle, deadline = Clock::now() + delay, task = std::move(task)] {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    QTimer::singleShot(std::max(left, std::chrono::milliseconds::zero()), Qt::PreciseTimer,
                       &m_timers, [handle, task] {
                         if (!handle.isCancelled()) task();
                       });
  });
  return handle;
}

TaskHandle QtScheduler::repeatEvery(std::chrono::milliseconds interval, Task task) {
  TaskHandle handle = TaskHandle::make();
  post([this, handle, interval, task = std::move(task)] {
    auto* timer = new QTimer(&m_timers);
    QObject::connect(timer, &QTimer::timeout, &m_timers, [timer, handle, task] {
      if (!handle.isCancelled()) return task();
      timer->stop();
      timer->deleteLater();
    });
    timer->start(interval);
  });
  return handle;
}

void QtScheduler::runPendingTasks() {
  // Only as many as wait now: tasks that keep posting tasks must not starve the event loop.
  for (std::size_t count = pendingCount(); count > 0; --count) {
    const Task task = takeNext();
    if (!task) return;  // a nested event loop, run by the task before, has taken the rest
    task();
  }
}

std::size_t QtScheduler::pendingCount() {
  const std::lock_guard lock(m_mutex);
  return m_tasks.size();
}

Scheduler::Task QtScheduler::takeNext() {
  const std::lock_guard lock(m_mutex);
  if (m_tasks.empty()) return {};
  Task task = std::move(m_tasks.front());
  m_tasks.pop_front();
  if (m_tasks.empty()) m_wakeUp.lower();
  return task;
}

}  // namespace zarvy
