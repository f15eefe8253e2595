#pragma once

#include <QDeadlineTimer>

namespace zarvy {

// Sleep until the system can read from `descriptor`, or write to it, without blocking, which is so
// too where that would fail or the other end is closed. False where the deadline comes first. Any
// thread.
[[nodiscard]] bool waitUntilReadable(int descriptor, const QDeadlineTimer& deadline);
[[nodiscard]] bool waitUntilWritable(int descriptor, const QDeadlineTimer& deadline);

}  // namespace zarvy
