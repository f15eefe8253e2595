#pragma once

#include <chrono>
#include <optional>

#include <QString>

namespace zarvy {

// The part of a D-Bus address at which a bus answers. A library that connects to a bus waits for
// its first words without limit, and all connections of the process with it; this one asks ahead of
// that, on a socket of its own. Addresses hold several parts, to be tried in their order; those
// that are no Unix sockets are passed over. Waits for up to `limit` at each part. Any thread.
[[nodiscard]] std::optional<QString> partThatAnswers(const QString& address,
                                                     std::chrono::milliseconds limit);

// The toolkit offers the program's own windows on the accessibility bus, and the main thread waits
// without limit for a bus that hangs. Has it leave such a bus alone; the windows are then not to be
// found there until the next start. Main thread, between the making of the QApplication and its
// exec(); waits where something hangs, for four seconds at most.
void keepToolkitFromBusThatHangs();

}  // namespace zarvy
