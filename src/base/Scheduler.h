#pragma once

#include <chrono>
#include <functional>

#include "base/TaskHandle.h"

namespace zarvy {

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
