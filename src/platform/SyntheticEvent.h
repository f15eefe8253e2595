#pragma once

#include <cmath>

namespace zarvy {

// The x coordinate that marks every key event this program posts, so that it does not hear its own
// typing. A platform whose events have no place reports this x for an event it knows as its own.
inline constexpr double syntheticEventMarkerX = -27469.0;

[[nodiscard]] inline bool isSyntheticLocation(double x) {
  return std::abs(x - syntheticEventMarkerX) < 0.001;
}

}  // namespace zarvy
