#include "platform/freedesktop/accessibility/AccessibleObject.h"

#include <utility>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QObject>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

bool isAnswerOf(const QDBusMessage& answer, QStringView signature) {
  return answer.type() == QDBusMessage::ReplyMessage && answer.signature() == signature;
}

}  // namespace

QString accessibilityRegistryName() {
  return u"org.a11y.atspi.Registry"_s;
}

AccessibleObject accessibleDesktop() {
  return {.peer = accessibilityRegistryName(), .path = u"/org/a11y/atspi/accessible/root"_s};
}

QDBusMessage questionTo(const AccessibleObject& object, const QString& member) {
  return QDBusMessage::createMethodCall(object.peer, object.path, u"org.a11y.atspi.Accessible"_s,
                                        member);
}

void askLater(const QDBusConnection& bus, const QDBusMessage& question, QObject* owner,
              std::function<void(const QDBusMessage& answer)> handler) {
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), owner);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner,
                   [handler = std::move(handler)](QDBusPendingCallWatcher* call) {
                     call->deleteLater();
                     handler(call->reply());
                   });
}

// The bits of all states stand in two words; the second holds none that is asked for here.
quint64 statesIn(const QDBusMessage& answer) {
  if (!isAnswerOf(answer, u"au")) return 0;
  const auto words = qdbus_cast<QList<uint>>(answer.arguments().value(0));
  return words.isEmpty() ? 0 : words.constFirst();
}

QList<AccessibleObject> objectsIn(const QDBusMessage& answer) {
  QList<AccessibleObject> objects;
  if (!isAnswerOf(answer, u"a(so)")) return objects;
  const auto list = answer.arguments().value(0).value<QDBusArgument>();
  list.beginArray();
  while (!list.atEnd()) {
    QString peer;
    QDBusObjectPath path;
    list.beginStructure();
    list >> peer >> path;
    list.endStructure();
    objects.append({.peer = peer, .path = path.path()});
  }
  list.endArray();
  return objects;
}

}  // namespace zarvy
