#include "platform/freedesktop/inputmethod/IBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QStandardPaths>
#include <QVariantMap>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// The file is named after the machine and the display, which is HOST:NUMBER.SCREEN.
QString addressFile() {
  if (QString chosen = qEnvironmentVariable("IBUS_ADDRESS_FILE"); !chosen.isEmpty()) {
    return chosen;
  }
  const QString display = qEnvironmentVariable("DISPLAY");
  const QString host = display.section(u':', 0, 0);
  const QString number = display.section(u':', 1).section(u'.', 0, 0);
  return u"%1/ibus/bus/%2-%3-%4"_s.arg(
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
      QString::fromLatin1(QDBusConnection::localMachineId()), host.isEmpty() ? u"unix"_s : host,
      number);
}

// Of an engine as ibus describes it: the name of the type, room for additions, and then the name of
// the engine ahead of all else.
QString nameOfEngine(const QVariant& description) {
  const auto structure = description.value<QDBusVariant>().variant().value<QDBusArgument>();
  if (structure.currentType() != QDBusArgument::StructureType) return {};
  QString type;
  QVariantMap additions;
  QString name;
  structure.beginStructure();
  structure >> type >> additions >> name;
  structure.endStructure();  // which frees what beginStructure() has made
  return name;
}

}  // namespace

QString ibusAddress() {
  if (QString chosen = qEnvironmentVariable("IBUS_ADDRESS"); !chosen.isEmpty()) return chosen;
  QFile file(addressFile());
  return file.open(QIODevice::ReadOnly) ? ibusAddressIn(file.readAll()) : QString();
}

QString ibusAddressIn(const QByteArray& content) {
  const QByteArray key = "IBUS_ADDRESS=";
  for (const QByteArray& line : content.split('\n')) {
    if (line.startsWith(key)) return QString::fromUtf8(line.mid(key.size())).trimmed();
  }
  return {};
}

// Where no engine has been chosen yet the answer is an error.
bool ibusIsComposing(const QDBusConnection& bus, std::chrono::milliseconds limit) {
  auto question =
      QDBusMessage::createMethodCall(u"org.freedesktop.IBus"_s, u"/org/freedesktop/IBus"_s,
                                     u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
  question << u"org.freedesktop.IBus"_s << u"GlobalEngine"_s;
  const auto answer = bus.call(question, QDBus::Block, static_cast<int>(limit.count()));
  if (answer.type() != QDBusMessage::ReplyMessage) return false;
  const auto property = answer.arguments().value(0).value<QDBusVariant>();
  return ibusEngineComposes(nameOfEngine(property.variant()));
}

// Its plain keyboards are called "xkb:us::eng" and the like.
bool ibusEngineComposes(QStringView engine) {
  return !engine.isEmpty() && !engine.startsWith(u"xkb:");
}

}  // namespace zarvy
