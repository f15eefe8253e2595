#pragma once

#include <QDeadlineTimer>

namespace zarvy {

// Sleeps until poll() has something to say about `descriptor`: one of `events`, or an error or a
// hang-up. False where the deadline comes first. Any thread.
[[nodiscard]] bool waitUntilReady(int descriptor, short events, const QDeadlineTimer& deadline);

}  // namespace zarvy
