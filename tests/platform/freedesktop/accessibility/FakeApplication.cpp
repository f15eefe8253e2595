#include "platform/freedesktop/accessibility/FakeApplication.h"

#include <stdexcept>
#include <utility>

#include <QDBusVariant>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

const QString window = u"/window"_s;

}  // namespace

FakeApplication::FakeApplication(const QString& accessibilityAddress)
    : m_bus(accessibilityAddress), m_name(m_bus.get().baseService()) {
  if (!m_bus.get().registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath)) {
    throw std::runtime_error("the application has no objects");
  }
}

void FakeApplication::answerAll() {
  m_isHanging = false;
  m_isHangingAtRoles = false;
  for (const QDBusMessage& question : std::exchange(m_unanswered, {})) {
    m_bus.get().send(answerTo(question));
  }
}

void FakeApplication::tellFocus(const QString& field, bool isFocused) {
  tell(field, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s,
       {u"focused"_s, isFocused ? 1 : 0, 0, QVariant::fromValue(QDBusVariant(0)), QVariantMap()});
}

void FakeApplication::tellDeactivatedWindow() {
  tell(window, u"org.a11y.atspi.Event.Window"_s, u"Deactivate"_s,
       {QString(), 0, 0, QVariant::fromValue(QDBusVariant(0)), QVariantMap()});
}

void FakeApplication::tellActivatedWindow() {
  tell(window, u"org.a11y.atspi.Event.Window"_s, u"Activate"_s,
       {QString(), 0, 0, QVariant::fromValue(QDBusVariant(0)), QVariantMap()});
}

void FakeApplication::tellNewRole(const QString& field) {
  tell(field, u"org.a11y.atspi.Event.Object"_s, u"PropertyChange"_s,
       {u"accessible-role"_s, 0, 0, QVariant::fromValue(QDBusVariant(0)), QVariantMap()});
}

void FakeApplication::tellNonsense(const QString& field) {
  tell(field, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, {u"focused"_s, u"perhaps"_s});
  tell(field, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, {u"focused"_s});
}

void FakeApplication::tell(const QString& path, const QString& interface, const QString& name,
                           const QVariantList& arguments) {
  auto signal = QDBusMessage::createSignal(path, interface, name);
  signal.setArguments(arguments);
  m_bus.get().send(signal);
}

bool FakeApplication::handleMessage(const QDBusMessage& message,
                                    const QDBusConnection& connection) {
  ++m_questionCount;
  if (message.member() == u"GetAttributes" && message.path() == window) ++m_attributesAsked;
  const bool isAboutRole = message.member() == u"GetRole";
  if (isAboutRole) m_rolesAsked.append(message.path());
  message.setDelayedReply(true);
  if (m_isHanging || (isAboutRole && m_isHangingAtRoles)) {
    m_unanswered.append(message);
  } else {
    connection.send(answerTo(message));
  }
  return true;
}

uint FakeApplication::statesOf(const QString& path) const {
  constexpr uint active = 1U << 1U;
  constexpr uint focused = 1U << 12U;
  constexpr uint showing = 1U << 25U;
  const bool isInFront = m_isActive && path == window;
  return showing | (isInFront ? active : 0U) | (path == m_focused ? focused : 0U);
}

QStringList FakeApplication::childrenOf(const QString& path) const {
  if (path == accessibleRoot) return {window};
  return path == window ? m_roles.keys() : QStringList();
}

QDBusMessage FakeApplication::answerTo(const QDBusMessage& question) const {
  if (question.member() == u"GetRole") {
    const QVariant role = m_roles.value(question.path());
    if (role.isValid()) return question.createReply(role);
  }
  if (question.member() == u"GetState") {
    const QList<uint> states{statesOf(question.path()), 0U};
    return question.createReply(QVariant::fromValue(states));
  }
  if (question.member() == u"GetChildren") {
    QList<AccessibleObject> children;
    for (const QString& path : childrenOf(question.path())) {
      children.append({.peer = m_name, .path = QDBusObjectPath(path)});
    }
    return question.createReply(answerOf(children));
  }
  if (question.arguments() == QVariantList{u"org.a11y.atspi.Application"_s, u"ToolkitName"_s}) {
    return question.createReply(QVariant::fromValue(QDBusVariant(m_toolkit)));
  }
  return question.createErrorReply(QDBusError::UnknownMethod, u"no such method"_s);
}

}  // namespace zarvy
