#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QMetaType>
#include <QString>
#include <QVariant>

namespace zarvy {

// Where applications, and the desktop around them, keep what holds all else.
inline const QString accessibleRoot = QStringLiteral("/org/a11y/atspi/accessible/root");

// An object on the accessibility bus, as it goes over that bus.
struct AccessibleObject {
  QString peer;
  QDBusObjectPath path;
};

QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleObject& object);
const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleObject& object);

// What an object answers that is asked for its children.
[[nodiscard]] QVariant answerOf(const QList<AccessibleObject>& children);

}  // namespace zarvy

Q_DECLARE_METATYPE(zarvy::AccessibleObject)
