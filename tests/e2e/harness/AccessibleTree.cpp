#include "e2e/harness/AccessibleTree.h"

#include <stdexcept>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVariant>
#include <QUuid>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString accessibleInterface = u"org.a11y.atspi.Accessible"_s;
const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

constexpr int answerDeadline = 10000;  // milliseconds
constexpr int deepest = 20;

bool isAnswer(const QDBusMessage& reply) {
  return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty();
}

}  // namespace

AccessibleTree::AccessibleTree(const std::string& address)
    : m_connectionName(QUuid::createUuid().toString()),
      m_bus(QDBusConnection::connectToBus(QString::fromStdString(address), m_connectionName)) {
  if (!m_bus.isConnected()) throw std::runtime_error("no accessibility bus");
}

AccessibleTree::~AccessibleTree() {
  QDBusConnection::disconnectFromBus(m_connectionName);
}

std::optional<AccessibleTree::Object> AccessibleTree::applicationOf(
    qint64 processIdentifier) const {
  const Object desktop{.bus = u"org.a11y.atspi.Registry"_s,
                       .path = u"/org/a11y/atspi/accessible/root"_s};
  for (const Object& application : childrenOf(desktop)) {
    const QDBusReply<uint> owner = m_bus.interface()->servicePid(application.bus);
    if (owner.isValid() && owner.value() == processIdentifier) return application;
  }
  return std::nullopt;
}

QList<AccessibleTree::Object> AccessibleTree::childrenOf(const Object& object) const {
  const QDBusMessage reply = call(object, accessibleInterface, u"GetChildren"_s);
  QList<Object> children;
  if (!isAnswer(reply)) return children;
  const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
  argument.beginArray();
  while (!argument.atEnd()) {
    Object child;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> child.bus >> path;
    argument.endStructure();
    child.path = path.path();
    children.append(child);
  }
  argument.endArray();
  return children;
}

AccessibleTree::Look AccessibleTree::lookAt(const Object& object) const {
  const QDBusReply<QString> role = call(object, accessibleInterface, u"GetRoleName"_s);
  const QDBusReply<QList<uint>> states = call(object, accessibleInterface, u"GetState"_s);
  const QDBusReply<QDBusVariant> name =
      call(object, propertiesInterface, u"Get"_s, {accessibleInterface, u"Name"_s});
  if (!role.isValid() || !states.isValid() || !name.isValid()) return {};
  return {.role = role.value(),
          .name = name.value().variant().toString(),
          .states = states.value().isEmpty() ? 0 : states.value().constFirst()};
}

std::optional<AccessibleTree::Object> AccessibleTree::find(const Object& object,
                                                           const ObjectTest& wanted) const {
  return findBelow(object, wanted, 0);
}

std::optional<AccessibleTree::Object> AccessibleTree::findBelow(const Object& object,
                                                                const ObjectTest& wanted,
                                                                int depth) const {
  if (wanted(object)) return object;
  if (depth == deepest) return std::nullopt;
  for (const Object& child : childrenOf(object)) {
    if (auto found = findBelow(child, wanted, depth + 1)) return found;
  }
  return std::nullopt;
}

QVariant AccessibleTree::ask(const Object& object, const QString& interface, const QString& member,
                             const QVariantList& arguments) const {
  const QDBusMessage reply = call(object, interface, member, arguments);
  if (isAnswer(reply)) return reply.arguments().constFirst();
  throw std::runtime_error("no answer to " + member.toStdString() + ": " +
                           reply.errorMessage().toStdString());
}

QVariant AccessibleTree::property(const Object& object, const QString& interface,
                                  const QString& name) const {
  return ask(object, propertiesInterface, u"Get"_s, {interface, name})
      .value<QDBusVariant>()
      .variant();
}

QDBusMessage AccessibleTree::call(const Object& object, const QString& interface,
                                  const QString& member, const QVariantList& arguments) const {
  auto question = QDBusMessage::createMethodCall(object.bus, object.path, interface, member);
  question.setArguments(arguments);
  return m_bus.call(question, QDBus::Block, answerDeadline);
}

}  // namespace zarvy::e2e
