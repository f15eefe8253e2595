#include "platform/freedesktop/accessibility/AccessibleObject.h"

#include <QDBusMetaType>

namespace zarvy {

QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleObject& object) {
  argument.beginStructure();
  argument << object.peer << object.path;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleObject& object) {
  argument.beginStructure();
  argument >> object.peer >> object.path;
  argument.endStructure();
  return argument;
}

QVariant answerOf(const QList<AccessibleObject>& children) {
  qDBusRegisterMetaType<AccessibleObject>();
  qDBusRegisterMetaType<QList<AccessibleObject>>();
  return QVariant::fromValue(children);
}

}  // namespace zarvy
