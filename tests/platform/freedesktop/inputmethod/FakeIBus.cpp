#include "platform/freedesktop/inputmethod/FakeIBus.h"

#include <stdexcept>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QVariantMap>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// The beginning of what ibus tells of an engine; the rest is texts and numbers alike.
struct EngineDescription {
  QString name;
};

QDBusArgument& operator<<(QDBusArgument& argument, const EngineDescription& engine) {
  argument.beginStructure();
  argument << u"IBusEngineDesc"_s << QVariantMap() << engine.name << u"Long Name"_s << u"zh_CN"_s
           << 99U;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, EngineDescription& /*engine*/) {
  return argument;
}

}  // namespace

}  // namespace zarvy

Q_DECLARE_METATYPE(zarvy::EngineDescription)

namespace zarvy {

FakeIBus::FakeIBus() : m_bus(m_daemon.address()) {
  qDBusRegisterMetaType<EngineDescription>();
  if (!m_bus.get().registerVirtualObject(u"/org/freedesktop/IBus"_s, this) ||
      !m_bus.get().registerService(u"org.freedesktop.IBus"_s)) {
    throw std::runtime_error("the name of ibus is taken");
  }
}

bool FakeIBus::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (!answers) return true;
  const bool isAboutEngine =
      message.member() == u"Get" && message.arguments().value(1).toString() == u"GlobalEngine";
  if (!isAboutEngine) return false;
  if (globalEngine.isEmpty()) {
    return connection.send(
        message.createErrorReply(u"org.freedesktop.DBus.Error.Failed"_s, u"No global engine."_s));
  }
  const QDBusVariant description(QVariant::fromValue(EngineDescription{globalEngine}));
  const QDBusVariant property(QVariant::fromValue(description));
  return connection.send(message.createReply(QVariant::fromValue(property)));
}

}  // namespace zarvy
