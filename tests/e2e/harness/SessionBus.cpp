#include "e2e/harness/SessionBus.h"

#include <filesystem>
#include <stdexcept>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QScopeGuard>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto startDeadline = std::chrono::seconds(30);

std::string launcherPath() {
  for (const char* path :
       {"/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher"}) {
    if (std::filesystem::exists(path)) return path;
  }
  throw std::runtime_error("at-spi-bus-launcher is not installed");
}

std::string askForAccessibilityBus(const std::string& sessionAddress) {
  const QString name = u"zarvy-e2e-session"_s;
  std::string address;
  const auto disconnect = qScopeGuard([&] { QDBusConnection::disconnectFromBus(name); });
  {
    const QDBusConnection bus =
        QDBusConnection::connectToBus(QString::fromStdString(sessionAddress), name);
    // Asking a name that nobody holds yet would have the bus start a launcher of its own.
    if (!bus.interface() || !bus.interface()->isServiceRegistered(u"org.a11y.Bus"_s)) return {};
    const auto question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                         u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QDBusReply<QString> reply = bus.call(question);
    if (reply.isValid()) address = reply.value().toStdString();
  }
  return address;
}

}  // namespace

SessionBus::SessionBus(const Environment& environment, const std::string& logFolder)
    : m_daemon({.program = "dbus-daemon",
                .arguments = {"--session", "--nofork", "--nopidfile", "--print-address=1"},
                .environment = environment,
                .errorFile = logFolder + "/dbus.log",
                .descriptors = {}}) {
  if (!m_daemon.waitForLine([](const std::string&) { return true; }, startDeadline)) {
    throw std::runtime_error("dbus-daemon did not come up");
  }
  m_address = m_daemon.outputLines().front();

  // Started here and not by the bus, so that it ends with this object whatever happens.
  Environment launcherEnvironment = environment;
  launcherEnvironment["DBUS_SESSION_BUS_ADDRESS"] = m_address;
  m_launcher.emplace(ProcessSpecification{.program = launcherPath(),
                                          .arguments = {"--launch-immediately", "--a11y=1"},
                                          .environment = launcherEnvironment,
                                          .errorFile = logFolder + "/a11y.log",
                                          .descriptors = {}});
  const auto hasAddress = [this] {
    m_accessibilityAddress = askForAccessibilityBus(m_address);
    return !m_accessibilityAddress.empty();
  };
  if (!waitUntil(hasAddress, startDeadline)) {
    throw std::runtime_error("the accessibility bus did not come up");
  }
}

SessionBus::~SessionBus() = default;

pid_t SessionBus::accessibilityProcess() const {
  const QString name = u"zarvy-e2e-accessibility"_s;
  const auto disconnect = qScopeGuard([&] { QDBusConnection::disconnectFromBus(name); });
  const QDBusConnection bus =
      QDBusConnection::connectToBus(QString::fromStdString(m_accessibilityAddress), name);
  if (!bus.interface()) throw std::runtime_error("the accessibility bus has gone");
  return static_cast<pid_t>(bus.interface()->servicePid(u"org.freedesktop.DBus"_s).value());
}

}  // namespace zarvy::e2e
