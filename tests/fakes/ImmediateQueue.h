#pragma once

#include "base/TaskQueue.h"

namespace zarvy {

// A queue that runs each task inside the call that posts it.
template <typename Queue>
class ImmediateQueue final : public Queue {
 public:
  void post(TaskQueue::Task task) override { task(); }
  void drain() override {}
};

using ImmediateSerialQueue = ImmediateQueue<SerialQueue>;
using ImmediateWorkerPool = ImmediateQueue<WorkerPool>;

}  // namespace zarvy
