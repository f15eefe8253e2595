#include "platform/freedesktop/PortalColorScheme.h"

#include <utility>

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QVariant>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colorScheme = u"color-scheme"_s;

// Portals put a variant into the variant of an answer.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

PortalColorScheme::PortalColorScheme(const QDBusConnection& session, Listener onScheme,
                                     std::function<void()> onAnswered)
    : m_onScheme(std::move(onScheme)), m_onAnswered(std::move(onAnswered)) {
  if (!session.isConnected()) {
    m_onAnswered();
    return;
  }
  QDBusConnection bus = session;
  bus.connect(service, portalPath, settings, u"SettingChanged"_s, this,
              SLOT(settingChanged(QDBusMessage)));
  ask(session);
}

void PortalColorScheme::ask(const QDBusConnection& session) {
  auto question = QDBusMessage::createMethodCall(service, portalPath, settings, u"Read"_s);
  question << appearance << colorScheme;
  auto* const watcher = new QDBusPendingCallWatcher(session.asyncCall(question), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    watcher->deleteLater();
    const QDBusPendingReply<QDBusVariant> answer = *watcher;
    if (!answer.isError()) tell(answer.value().variant());
    m_onAnswered();
  });
}

void PortalColorScheme::settingChanged(const QDBusMessage& message) {
  const QVariantList arguments = message.arguments();
  const bool isColorScheme =
      arguments.size() == 3 && arguments.at(0) == appearance && arguments.at(1) == colorScheme;
  if (isColorScheme) tell(arguments.at(2));
}

void PortalColorScheme::tell(const QVariant& value) const {
  switch (unwrapped(value).toUInt()) {
    case 1:
      return m_onScheme(ColorScheme::dark);
    case 2:
      return m_onScheme(ColorScheme::light);
    default:
      return m_onScheme(ColorScheme::unstated);
  }
}

}  // namespace zarvy
