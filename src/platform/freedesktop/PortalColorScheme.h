#pragma once

#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include "platform/ColorScheme.h"

namespace zarvy {

// Light or dark, as the settings portal of the desktop tells it (org.freedesktop.appearance). Main
// thread.
class PortalColorScheme final : public QObject {
  Q_OBJECT

 public:
  using Listener = std::function<void(ColorScheme scheme)>;

  // `onScheme` is called whenever the portal tells one: soon after the making of this object, and
  // at each change. Never where `session` is not connected, or no service there has such settings.
  // No call waits for an answer. `onAnswered` is called once, when the portal has answered,
  // whatever it says, and so knows this program; in the constructor where there is no portal to
  // ask.
  PortalColorScheme(const QDBusConnection& session, Listener onScheme,
                    std::function<void()> onAnswered);

  // Called by the bus.
  Q_SLOT void settingChanged(const QDBusMessage& message);

 private:
  void ask(const QDBusConnection& session);
  void tell(const QVariant& value) const;

  const Listener m_onScheme;
  const std::function<void()> m_onAnswered;
};

}  // namespace zarvy
