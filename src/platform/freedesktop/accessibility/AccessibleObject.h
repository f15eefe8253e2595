#pragma once

#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

class QObject;

namespace zarvy {

// An object on the accessibility bus: an application, a window, a field.
struct AccessibleObject {
  QString peer;  // the unique name of the application's connection
  QString path;

  bool operator==(const AccessibleObject&) const = default;
};

// States of an object, as bits by the numbers of the accessibility protocol.
namespace accessiblestate {

constexpr quint64 active = 1ULL << 1U;
constexpr quint64 focused = 1ULL << 12U;
constexpr quint64 showing = 1ULL << 25U;
constexpr quint64 managesDescendants = 1ULL << 31U;  // a table, with cells without number

}  // namespace accessiblestate

// The name under which all applications are registered on the bus.
[[nodiscard]] QString accessibilityRegistryName();

// The object that has all applications for its children.
[[nodiscard]] AccessibleObject accessibleDesktop();

// The call of a member of the interface that every object has.
[[nodiscard]] QDBusMessage questionTo(const AccessibleObject& object, const QString& member);

// Puts `question` on `bus` and returns. `handler` gets the answer, an error included, on the thread
// of `owner`, which runs an event loop; not where `owner` is gone by then.
void askLater(const QDBusConnection& bus, const QDBusMessage& question, QObject* owner,
              std::function<void(const QDBusMessage& answer)> handler);

// What an answer to "GetState" says; none where it is an error or something else.
[[nodiscard]] quint64 statesIn(const QDBusMessage& answer);

// The same for "GetChildren".
[[nodiscard]] QList<AccessibleObject> objectsIn(const QDBusMessage& answer);

}  // namespace zarvy
