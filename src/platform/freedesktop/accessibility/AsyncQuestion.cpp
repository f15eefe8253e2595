#include "platform/freedesktop/accessibility/AsyncQuestion.h"

#include <utility>

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QObject>

namespace zarvy {

void askLater(const QDBusConnection& bus, const QDBusMessage& question, QObject* owner,
              std::function<void(const QDBusMessage& answer)> handler) {
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), owner);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner,
                   [handler = std::move(handler)](QDBusPendingCallWatcher* call) {
                     call->deleteLater();
                     handler(call->reply());
                   });
}

}  // namespace zarvy
