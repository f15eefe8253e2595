#pragma once

#include <chrono>

#include "platform/Pasteboard.h"

namespace zarvy::x11 {

// The clipboard that another client of the display owns, the one of Ctrl+C. Each look has a
// connection of its own, since the events of the session's are taken by one thread, and ends after
// `limit` at the latest, whatever the owner does. Any thread. What a window of the calling thread
// owns cannot be read so: the thread waits here and does not answer itself.
class X11Pasteboard final : public Pasteboard {
 public:
  explicit X11Pasteboard(std::chrono::milliseconds limit = std::chrono::seconds(1))
      : m_limit(limit) {}

  // Empty also where the owner gives no text within the limit, or one of more than 64 MiB, which no
  // expansion has room for.
  [[nodiscard]] QString text() const override;

 private:
  const std::chrono::milliseconds m_limit;
};

}  // namespace zarvy::x11
