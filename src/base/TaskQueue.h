#pragma once

#include <functional>

namespace zarvy {

// Runs work away from the main thread. `post` may be called from any thread.
class TaskQueue {
 public:
  using Task = std::function<void()>;

  virtual ~TaskQueue() = default;

  virtual void post(Task task) = 0;

  // Returns when every task posted so far has ended. Not from a task of the queue itself.
  virtual void drain() = 0;
};

// Tasks run one at a time, in the order in which they were posted.
class SerialQueue : public TaskQueue {};

// Tasks run beside each other, in no order.
class WorkerPool : public TaskQueue {};

}  // namespace zarvy
