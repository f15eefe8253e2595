#include "platform/freedesktop/accessibility/FakeLauncher.h"

#include <stdexcept>
#include <utility>

#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

FakeLauncher::FakeLauncher(const QString& sessionAddress, QString accessibilityAddress,
                           bool isEnabled)
    : m_accessibilityAddress(std::move(accessibilityAddress)),
      m_isEnabled(isEnabled),
      m_bus(sessionAddress) {
  if (!m_bus.get().registerVirtualObject(u"/org/a11y/bus"_s, this) ||
      !m_bus.get().registerService(u"org.a11y.Bus"_s)) {
    throw std::runtime_error("the name of the launcher is taken");
  }
}

bool FakeLauncher::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const QVariantList arguments = message.arguments();
  if (message.member() == u"GetAddress") {
    ++m_addressQuestionCount;
    return connection.send(message.createReply(m_accessibilityAddress));
  }
  if (arguments.value(0).toString() != u"org.a11y.Status" ||
      arguments.value(1).toString() != u"IsEnabled") {
    return false;
  }
  if (message.member() == u"Get") {
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_isEnabled))));
  }
  m_isEnabled = arguments.value(2).value<QDBusVariant>().variant().toBool();
  m_settings.append(m_isEnabled);
  return connection.send(message.createReply());
}

}  // namespace zarvy
