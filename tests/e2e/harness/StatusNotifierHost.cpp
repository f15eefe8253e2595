#include "e2e/harness/StatusNotifierHost.h"

#include <mutex>
#include <stdexcept>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QUuid>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;

QDBusMessage propertyQuestion(const QString& service, const QString& path, const QString& interface,
                              const QString& name) {
  auto question =
      QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
  question << interface << name;
  return question;
}

}  // namespace

// Takes every icon, and says that there is somebody who shows it.
class StatusNotifierHost::Watcher final : public QDBusVirtualObject {
 public:
  // Of the connections that have an icon. Any thread.
  [[nodiscard]] QStringList owners() const {
    const std::scoped_lock guard(m_lock);
    return m_owners;
  }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override {
    return uR"(<interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface>)"_s;
  }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() == u"Get") {
      return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(true))));
    }
    if (message.member() != u"RegisterStatusNotifierItem") return false;
    {
      const std::scoped_lock guard(m_lock);
      m_owners.append(message.service());
    }
    return connection.send(message.createReply());
  }

 private:
  mutable std::mutex m_lock;
  QStringList m_owners;
};

StatusNotifierHost::StatusNotifierHost(const std::string& sessionAddress)
    : m_bus(QDBusConnection::connectToBus(QString::fromStdString(sessionAddress),
                                          QUuid::createUuid().toString())),
      m_watcher(std::make_unique<Watcher>()) {
  m_watcher->moveToThread(&m_thread);
  m_thread.start();
  if (!m_bus.registerVirtualObject(u"/StatusNotifierWatcher"_s, m_watcher.get()) ||
      !m_bus.registerService(watcherName)) {
    throw std::runtime_error("no tray on the session bus");
  }
}

StatusNotifierHost::~StatusNotifierHost() {
  const QString name = m_bus.name();
  m_bus = QDBusConnection(QString());
  QDBusConnection::disconnectFromBus(name);
  m_thread.quit();
  m_thread.wait();
}

QString StatusNotifierHost::toolTipOf(qint64 processIdentifier) const {
  for (const QString& owner : m_watcher->owners()) {
    const QDBusReply<uint> process = m_bus.interface()->servicePid(owner);
    if (process.isValid() && process.value() == processIdentifier) return toolTipOf(owner);
  }
  return {};
}

QString StatusNotifierHost::toolTipOf(const QString& owner) const {
  const QDBusMessage reply = m_bus.call(propertyQuestion(
      owner, u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, u"ToolTip"_s));
  if (reply.type() != QDBusMessage::ReplyMessage) return {};
  const auto toolTip =
      reply.arguments().value(0).value<QDBusVariant>().variant().value<QDBusArgument>();
  QString iconName;
  QString title;
  toolTip.beginStructure();
  toolTip >> iconName;
  toolTip.beginArray();  // the icon's pixels
  while (!toolTip.atEnd()) {
    int width = 0;
    int height = 0;
    QByteArray pixels;
    toolTip.beginStructure();
    toolTip >> width >> height >> pixels;
    toolTip.endStructure();
  }
  toolTip.endArray();
  toolTip >> title;
  return title;
}

}  // namespace zarvy::e2e
