#pragma once

#include <chrono>

namespace zarvy {

// Sleeps by the monotonic clock, to within some microseconds of `duration`, never less, whatever
// signals come in between. Returns at once where there is no duration. Any thread, which keeps that
// precision for all that it waits for from then on.
void sleepPrecisely(std::chrono::microseconds duration);

}  // namespace zarvy
