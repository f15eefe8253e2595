#include "base/ThreadQueues.h"

#include <utility>

#include "base/posix/OwnProcess.h"

namespace zarvy {

TaskThreads::TaskThreads(std::string name, std::size_t maxThreads)
    : m_name(std::move(name)), m_maxThreads(maxThreads) {}

TaskThreads::~TaskThreads() {
  {
    const std::lock_guard lock(m_mutex);
    m_ending = true;
  }
  m_wake.notify_all();
  for (std::thread& thread : m_threads) thread.join();
}

void TaskThreads::post(Task task) {
  const std::lock_guard lock(m_mutex);
  m_tasks.push_back(std::move(task));
  if (m_tasks.size() > m_idle && m_threads.size() < m_maxThreads) {
    m_threads.emplace_back([this] { runTasks(); });
  } else {
    m_wake.notify_one();
  }
}

void TaskThreads::drain() {
  std::unique_lock lock(m_mutex);
  m_allDone.wait(lock, [this] { return hasNothingToDo(); });
}

bool TaskThreads::drainUntil(std::chrono::steady_clock::time_point deadline) {
  std::unique_lock lock(m_mutex);
  return m_allDone.wait_until(lock, deadline, [this] { return hasNothingToDo(); });
}

bool TaskThreads::hasNothingToDo() const {
  return m_tasks.empty() && m_running == 0;
}

void TaskThreads::runTasks() {
  nameThisThread(m_name);
  std::unique_lock lock(m_mutex);
  while (true) {
    ++m_idle;
    m_wake.wait(lock, [this] { return !m_tasks.empty() || m_ending; });
    --m_idle;
    if (m_tasks.empty()) return;
    Task task = std::move(m_tasks.front());
    m_tasks.pop_front();
    ++m_running;
    lock.unlock();
    task();
    task = nullptr;  // not under the lock: the end of what it holds may post a task
    lock.lock();
    --m_running;
    if (hasNothingToDo()) m_allDone.notify_all();
  }
}

}  // namespace zarvy
