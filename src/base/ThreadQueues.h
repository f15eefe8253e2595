#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "base/TaskQueue.h"

namespace zarvy {

// The threads behind the queues: tasks start in the order in which they were posted, on at most
// `maxThreads` threads. A thread is made when a task finds none idle, and then stays, so that a
// task which is in a hurry does not wait for a thread to be born. An idle thread never wakes up.
class TaskThreads {
 public:
  using Task = std::function<void()>;

  // `name` shows in debuggers; the system keeps its first 15 bytes.
  TaskThreads(std::string name, std::size_t maxThreads);

  // Runs what is still posted to its end first.
  ~TaskThreads();

  TaskThreads(const TaskThreads&) = delete;
  TaskThreads& operator=(const TaskThreads&) = delete;

  // Any thread.
  void post(Task task);

  // Returns once no task is waiting or running. Any thread but these.
  void drain();

  // The same, but gives up at `deadline`; false then.
  [[nodiscard]] bool drainUntil(std::chrono::steady_clock::time_point deadline);

 private:
  void runTasks();
  [[nodiscard]] bool hasNothingToDo() const;  // m_mutex is held

  const std::string m_name;
  const std::size_t m_maxThreads;
  std::mutex m_mutex;  // guards all below
  std::condition_variable m_wake;
  std::condition_variable m_allDone;
  std::deque<Task> m_tasks;
  std::vector<std::thread> m_threads;
  std::size_t m_idle = 0;
  std::size_t m_running = 0;
  bool m_ending = false;
};

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
