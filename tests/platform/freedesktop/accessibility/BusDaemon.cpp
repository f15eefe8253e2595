#include "platform/freedesktop/accessibility/BusDaemon.h"

#include <fstream>
#include <stdexcept>

#include <QUuid>

#include "e2e/harness/Environment.h"

namespace zarvy {

namespace {

constexpr auto configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}  // namespace

BusDaemon::BusDaemon() {
  const std::string folder = m_folder.path().toStdString();
  const std::string file = folder + "/bus.conf";
  std::ofstream(file) << configuration;
  m_process.emplace(e2e::ProcessSpecification{
      .program = "dbus-daemon",
      .arguments = {"--config-file=" + file, "--nofork", "--nopidfile", "--print-address=1"},
      .environment = e2e::environmentWithHome(folder),
      .errorFile = folder + "/bus.log",
      .descriptors = {}});
  if (!m_process->waitForLine([](const std::string&) { return true; }, std::chrono::seconds(30))) {
    throw std::runtime_error("dbus-daemon did not come up");
  }
  m_address = QString::fromStdString(m_process->outputLines().front());
}

BusConnection::BusConnection(const QString& address)
    : m_connection(QDBusConnection::connectToBus(address, QUuid::createUuid().toString())) {
  if (!m_connection.isConnected()) throw std::runtime_error("no bus");
}

BusConnection::~BusConnection() {
  const QString name = m_connection.name();
  m_connection = QDBusConnection(QString());
  QDBusConnection::disconnectFromBus(name);
}

}  // namespace zarvy
