#pragma once

#include <chrono>
#include <thread>

namespace zarvy::e2e {

// Asks `condition` again and again until it holds; false once `deadline` has passed without. Every
// wait of the harness is a wait for something that can be observed.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition, std::chrono::milliseconds deadline,
                             std::chrono::milliseconds interval = std::chrono::milliseconds(10)) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(interval);
  }
  return true;
}

}  // namespace zarvy::e2e
