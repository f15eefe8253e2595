#include "platform/freedesktop/accessibility/FakeRegistry.h"

#include <stdexcept>

#include <QDBusMessage>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

FakeRegistry::FakeRegistry(const QString& accessibilityAddress) : m_bus(accessibilityAddress) {
  if (!m_bus.get().registerVirtualObject(u"/org/a11y/atspi/registry"_s, this) ||
      !m_bus.get().registerVirtualObject(accessibleRoot, this) ||
      !m_bus.get().registerService(u"org.a11y.atspi.Registry"_s)) {
    throw std::runtime_error("the name of the registry is taken");
  }
}

bool FakeRegistry::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.member() == u"GetChildren") {
    QList<AccessibleObject> children;
    for (const QString& name : m_applications) {
      children.append({.peer = name, .path = QDBusObjectPath(accessibleRoot)});
    }
    return connection.send(message.createReply(answerOf(children)));
  }
  if (message.member() == u"GetRegisteredEvents") {
    ++m_questionCount;
    return connection.send(message.createReply());
  }
  if (message.member() != u"RegisterEvent") return false;
  m_wantedEvents.append(message.arguments().value(0).toString());
  return connection.send(message.createReply());
}

}  // namespace zarvy
