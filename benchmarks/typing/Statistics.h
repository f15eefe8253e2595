#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <stdexcept>
#include <vector>

namespace zarvy::benchmarks {

using Milliseconds = std::chrono::duration<double, std::milli>;

// The smallest sample that at least `share` of all are not above; 0.5 gives the (lower) median.
// Throws std::invalid_argument without samples.
[[nodiscard]] inline double quantile(std::vector<double> samples, double share) {
  if (samples.empty()) throw std::invalid_argument("nothing was measured");
  const auto rank = std::ceil(share * static_cast<double>(samples.size()));
  const auto index = static_cast<std::ptrdiff_t>(std::max(rank, 1.0)) - 1;
  std::nth_element(samples.begin(), samples.begin() + index, samples.end());
  return samples[static_cast<std::size_t>(index)];
}

[[nodiscard]] inline double median(std::vector<double> samples) {
  return quantile(std::move(samples), 0.5);
}

}  // namespace zarvy::benchmarks
