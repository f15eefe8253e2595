#pragma once

#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>

class QObject;

namespace zarvy {

// Puts `question` on `bus` and returns. `handler` gets the answer, an error included, on the thread
// of `owner`, which runs an event loop; not where `owner` is gone by then.
void askLater(const QDBusConnection& bus, const QDBusMessage& question, QObject* owner,
              std::function<void(const QDBusMessage& answer)> handler);

}  // namespace zarvy
