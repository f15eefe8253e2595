#pragma once

#include <chrono>

class QDBusConnection;

namespace zarvy {

// Each blocks, for up to `limit` a question, of which there are two at most. Any thread.

// Whether fcitx5 is running; the bus says so, even if fcitx5 itself hangs.
[[nodiscard]] bool fcitx5IsThere(const QDBusConnection& session, std::chrono::milliseconds limit);

// Whether it makes other text of the keys now. False where it does not answer in time.
[[nodiscard]] bool fcitx5IsComposing(const QDBusConnection& session,
                                     std::chrono::milliseconds limit);

}  // namespace zarvy
