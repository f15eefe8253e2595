#include "base/MainThread.h"

#include <condition_variable>
#include <mutex>

namespace zarvy {

// Where the callers wait. Tasks run and the gate is closed on the same thread: a task that is under
// way when it closes is one that runs an event loop of its own, and its caller waits for its end;
// no task that comes later touches what its caller has taken with it.
class MainThread::Gate {
 public:
  void close() {
    const std::scoped_lock guard(m_lock);
    m_isClosed = true;
    m_changed.notify_all();
  }

  void perform(const std::function<void()>& task, bool& isDone) {
    {
      const std::scoped_lock guard(m_lock);
      if (m_isClosed) return;
      ++m_running;
    }
    task();
    const std::scoped_lock guard(m_lock);
    --m_running;
    isDone = true;
    m_changed.notify_all();
  }

  void waitFor(const bool& isDone) {
    std::unique_lock guard(m_lock);
    m_changed.wait(guard, [&] { return isDone || (m_isClosed && m_running == 0); });
  }

 private:
  std::mutex m_lock;
  std::condition_variable m_changed;
  bool m_isClosed = false;
  int m_running = 0;
};

MainThread::MainThread(Scheduler& scheduler)
    : m_scheduler(scheduler), m_id(std::this_thread::get_id()), m_gate(std::make_shared<Gate>()) {}

MainThread::~MainThread() {
  m_gate->close();
}

void MainThread::close() {
  m_gate->close();
}

void MainThread::run(const std::function<void()>& task) {
  if (std::this_thread::get_id() == m_id) {
    task();
    return;
  }
  bool isDone = false;
  m_scheduler.post([gate = m_gate, &task, &isDone] { gate->perform(task, isDone); });
  m_gate->waitFor(isDone);
}

}  // namespace zarvy
