#include "platform/freedesktop/accessibility/ToolkitBridge.h"

#include <chrono>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include "platform/freedesktop/accessibility/DBusProbe.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr std::chrono::milliseconds patience{500};

// Which the toolkit takes in place of all that it finds by itself.
constexpr auto addressVariable = "AT_SPI_BUS_ADDRESS";

// Nobody listens there, so that the toolkit goes on at once.
constexpr auto addressOfNoBus = "unix:path=/dev/null";

// Empty where there is none, or nobody who tells it.
QString addressOfBus() {
  QString chosen = qEnvironmentVariable(addressVariable);
  if (!chosen.isEmpty()) return chosen;
  const QDBusConnection session = QDBusConnection::sessionBus();
  const QString launcher = u"org.a11y.Bus"_s;
  if (!session.isConnected() || !session.interface()->isServiceRegistered(launcher)) return {};
  const auto question =
      QDBusMessage::createMethodCall(launcher, u"/org/a11y/bus"_s, launcher, u"GetAddress"_s);
  const auto answer = session.call(question, QDBus::Block, static_cast<int>(patience.count()));
  return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString()
                                                     : QString();
}

}  // namespace

void keepToolkitFromBusThatHangs() {
  const QString address = addressOfBus();
  if (!address.isEmpty() && !partThatAnswers(address, patience)) {
    qputenv(addressVariable, addressOfNoBus);
  }
}

}  // namespace zarvy
