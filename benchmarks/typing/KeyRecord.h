#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace zarvy::benchmarks {

// A key that went down, and when that became known to a client.
struct KeyDown {
  std::chrono::steady_clock::time_point arrival;
  std::uint8_t keycode = 0;
};

// Modifier keys are left out: how many of them an injection needs is its own affair.
using KeyRecord = std::vector<KeyDown>;

}  // namespace zarvy::benchmarks
