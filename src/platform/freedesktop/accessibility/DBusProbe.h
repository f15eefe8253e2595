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

}  // namespace zarvy
