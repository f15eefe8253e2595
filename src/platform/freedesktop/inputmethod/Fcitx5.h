#pragma once

#include <chrono>

#include <QStringView>

class QDBusConnection;

namespace zarvy {

// The first two block, for up to `limit` a question, of which there are two at most. Any thread.

// Whether fcitx5 is running; the bus says so, even if fcitx5 itself hangs.
[[nodiscard]] bool fcitx5IsThere(const QDBusConnection& session, std::chrono::milliseconds limit);

// Whether it makes other text of the keys now. False where it does not answer in time.
[[nodiscard]] bool fcitx5IsComposing(const QDBusConnection& session,
                                     std::chrono::milliseconds limit);

// Whether the input method of this name makes other text of the keys; none has no name.
[[nodiscard]] bool fcitx5MethodComposes(QStringView method);

// Whether the application that has the keyboard uses fcitx5 at all, by what fcitx5 tells of itself:
// it goes on naming the method of the one that had the keyboard before.
[[nodiscard]] bool fcitx5IsUsed(QStringView debugInfo);

}  // namespace zarvy
