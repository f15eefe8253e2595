#include "platform/freedesktop/accessibility/ToolkitBridge.h"

#include <chrono>
#include <optional>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QGuiApplication>

#include "platform/freedesktop/accessibility/DBusProbe.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// For each of the two questions. Long, as a slow machine must not cost anybody his screen reader.
constexpr std::chrono::milliseconds patience{2000};

// Which the toolkit takes in place of all that it finds by itself.
constexpr auto addressVariable = "AT_SPI_BUS_ADDRESS";

// Nobody listens there, so that the toolkit goes on at once.
constexpr auto addressOfNoBus = "unix:path=/dev/null";

// What the launcher of the bus says, unless it hangs as well.
std::optional<QString> askForAddress(const QDBusConnection& session, const QString& launcher) {
  const auto question =
      QDBusMessage::createMethodCall(launcher, u"/org/a11y/bus"_s, launcher, u"GetAddress"_s);
  const auto answer = session.call(question, QDBus::Block, static_cast<int>(patience.count()));
  if (answer.type() != QDBusMessage::ReplyMessage) return std::nullopt;
  return answer.arguments().value(0).toString();
}

bool busHangs() {
  const QString chosen = qEnvironmentVariable(addressVariable);
  if (!chosen.isEmpty()) return !partThatAnswers(chosen, patience);
  const QDBusConnection session = QDBusConnection::sessionBus();
  const QString launcher = u"org.a11y.Bus"_s;
  if (!session.isConnected() || !session.interface()->isServiceRegistered(launcher)) return false;
  const auto address = askForAddress(session, launcher);
  return !address || (!address->isEmpty() && !partThatAnswers(*address, patience));
}

}  // namespace

// Windows that nobody can see are not offered.
void keepToolkitFromBusThatHangs() {
  if (QGuiApplication::platformName() == u"offscreen") return;
  if (busHangs()) qputenv(addressVariable, addressOfNoBus);
}

}  // namespace zarvy
