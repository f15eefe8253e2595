#pragma once

#include <cstddef>
#include <optional>

#include <QByteArray>
#include <QDeadlineTimer>

namespace zarvy {

// Bytes that are moved as long as there is time. No call of the system that blocks would come back
// in time, so none does. Any thread.

enum class TransferEnd {
  done,      // all of them
  timedOut,  // some, or none
  broken,    // the same: the other end is closed, or the system refuses
};

// On a socket, whether or not it blocks by itself. A closed one raises no signal.
[[nodiscard]] TransferEnd sendInTime(int socket, const void* bytes, std::size_t size,
                                     const QDeadlineTimer& deadline);
[[nodiscard]] TransferEnd receiveInTime(int socket, void* bytes, std::size_t size,
                                        const QDeadlineTimer& deadline);

// What comes until the other end is closed, from a descriptor that does not block. Absent where
// that takes too long, where more than `most` bytes come, or where it cannot be read.
[[nodiscard]] std::optional<QByteArray> readToEnd(int descriptor, qsizetype most,
                                                  const QDeadlineTimer& deadline);

}  // namespace zarvy
