#include "platform/freedesktop/accessibility/DBusProbe.h"

#include <algorithm>
#include <array>
#include <unistd.h>

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QStringList>

#include "base/posix/FileDescriptor.h"
#include "base/posix/LocalSocketAddress.h"
#include "base/posix/Waiting.h"
#include "base/posix/WholeTransfers.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// More than a first line is long, of a bus that means it.
constexpr qsizetype longestLine = 1024;

// Of one part: "unix:" and then keys and values, whose odd characters are written "%xx".
std::optional<LocalSocketAddress> socketOf(const QByteArray& part) {
  const QByteArray transport = "unix:";
  if (!part.startsWith(transport)) return std::nullopt;
  for (const QByteArray& pair : part.mid(transport.size()).split(',')) {
    const qsizetype sign = pair.indexOf('=');
    const QByteArray key = pair.first(std::max<qsizetype>(sign, 0));
    if (key != "path" && key != "abstract") continue;
    using Kind = LocalSocketAddress::Kind;
    return LocalSocketAddress::of(QByteArray::fromPercentEncoding(pair.mid(sign + 1)),
                                  key == "abstract" ? Kind::abstract : Kind::path);
  }
  return std::nullopt;
}

// What every connection to a bus begins with: who is asking.
QByteArray greeting() {
  const QByteArray user = QByteArray::number(::getuid()).toHex();
  return QByteArray(1, '\0') + "AUTH EXTERNAL " + user + "\r\n";
}

bool send(const FileDescriptor& socket, const QByteArray& text) {
  return sendAll(socket.get(), text.constData(), static_cast<std::size_t>(text.size()));
}

// Empty where none comes in time.
QByteArray receiveLine(const FileDescriptor& socket, const QDeadlineTimer& deadline) {
  QByteArray text;
  while (!text.contains('\n') && text.size() < longestLine) {
    if (!waitUntilReadable(socket.get(), deadline)) return {};
    std::array<char, 256> bytes{};
    const ssize_t size = ::read(socket.get(), bytes.data(), bytes.size());
    if (size <= 0) return {};
    text.append(bytes.data(), size);
  }
  return text;
}

bool answers(const LocalSocketAddress& address, std::chrono::milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  const FileDescriptor socket = connectTo(address);
  return socket.isOpen() && send(socket, greeting()) &&
         receiveLine(socket, deadline).startsWith("OK");
}

}  // namespace

std::optional<QString> partThatAnswers(const QString& address, std::chrono::milliseconds limit) {
  for (const QString& part : address.split(u';', Qt::SkipEmptyParts)) {
    const auto socket = socketOf(part.toUtf8());
    if (socket && answers(*socket, limit)) return part;
  }
  return std::nullopt;
}

namespace {

// For each of the two questions. Long, as a slow machine must not cost a user the screen reader.
constexpr std::chrono::milliseconds patience{2000};

// Which the toolkit takes in place of all that it finds by itself.
constexpr auto addressVariable = "AT_SPI_BUS_ADDRESS";

// No bus listens there, so that the toolkit goes on at once.
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

// Without a display the toolkit offers no windows.
void keepToolkitFromBusThatHangs() {
  if (QGuiApplication::platformName() == u"offscreen") return;
  if (busHangs()) qputenv(addressVariable, addressOfNoBus);
}

}  // namespace zarvy
