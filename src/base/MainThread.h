#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <type_traits>

#include "base/Scheduler.h"

namespace zarvy {

// Runs a function on the main thread for a caller on any thread, who waits for it.
class MainThread {
 public:
  // Made on the main thread.
  explicit MainThread(Scheduler& scheduler);

  // As close(). No call may begin from now on.
  ~MainThread();
  MainThread(const MainThread&) = delete;
  MainThread& operator=(const MainThread&) = delete;

  // What `function` returns. It runs within the call where that is made on the main thread; on any
  // other thread the call waits until the main thread is free. Absent once closed.
  template <typename Function>
  [[nodiscard]] std::optional<std::invoke_result_t<Function>> call(Function function) {
    std::optional<std::invoke_result_t<Function>> value;
    run([&] { value.emplace(function()); });
    return value;
  }

  // Lets every call that waits, and every later one from another thread, return without its
  // function having run: the main thread can then wait for those threads to end. Main thread.
  void close();

 private:
  class Gate;

  void run(const std::function<void()>& task);

  Scheduler& m_scheduler;
  const std::thread::id m_id;
  const std::shared_ptr<Gate> m_gate;  // shared with the tasks that are on their way
};

}  // namespace zarvy
