#include "platform/freedesktop/accessibility/BrowserWaker.h"

#include <utility>

#include <QDBusPendingCall>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

BrowserWaker::BrowserWaker(QDBusConnection bus) : m_bus(std::move(bus)) {
  m_bus.connect({}, {}, u"org.a11y.atspi.Event.Window"_s, u"Activate"_s, this,
                SLOT(handleActivatedWindow(QDBusMessage)));
  askLater(m_bus, questionTo(accessibleDesktop(), u"GetChildren"_s), this,
           [this](const QDBusMessage& answer) {
             for (const AccessibleObject& child : objectsIn(answer)) wakeWindowsOf(child);
           });
}

void BrowserWaker::wakeWindowsOf(const AccessibleObject& application) {
  askLater(m_bus, questionTo(application, u"GetChildren"_s), this,
           [this](const QDBusMessage& answer) {
             for (const AccessibleObject& window : objectsIn(answer)) wake(window);
           });
}

void BrowserWaker::handleActivatedWindow(const QDBusMessage& signal) {
  wake({.peer = signal.service(), .path = signal.path()});
}

void BrowserWaker::wake(const AccessibleObject& window) {
  if (m_woken.contains(window.peer)) return;
  m_woken.insert(window.peer);
  m_bus.asyncCall(questionTo(window, u"GetAttributes"_s));
}

}  // namespace zarvy
