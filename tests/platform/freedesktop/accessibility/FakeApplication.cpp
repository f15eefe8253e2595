#include "platform/freedesktop/accessibility/FakeApplication.h"

#include <stdexcept>
#include <utility>

#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

FakeApplication::FakeApplication(const QString& accessibilityAddress)
    : m_bus(accessibilityAddress) {
  if (!m_bus.get().registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath)) {
    throw std::runtime_error("the application has no objects");
  }
}

void FakeApplication::answerAll() {
  for (const QDBusMessage& question : std::exchange(m_unanswered, {})) {
    m_bus.get().send(answerTo(question));
  }
}

void FakeApplication::tellFocus(const QString& field, bool isFocused) {
  tell(field, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s,
       {u"focused"_s, isFocused ? 1 : 0, 0, QVariant::fromValue(QDBusVariant(0)), QVariantMap()});
}

void FakeApplication::tellDeactivatedWindow() {
  tell(u"/window"_s, u"org.a11y.atspi.Event.Window"_s, u"Deactivate"_s,
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
  message.setDelayedReply(true);
  if (m_isHanging) {
    m_unanswered.append(message);
  } else {
    connection.send(answerTo(message));
  }
  return true;
}

QDBusMessage FakeApplication::answerTo(const QDBusMessage& question) const {
  if (question.member() == u"GetRole") {
    const QVariant role = m_roles.value(question.path());
    if (role.isValid()) return question.createReply(role);
  }
  if (question.member() == u"GetState") {
    const uint focusedState = 1U << 12U;
    const QList<uint> states{question.path() == m_focused ? focusedState : 0U, 0U};
    return question.createReply(QVariant::fromValue(states));
  }
  return question.createErrorReply(QDBusError::UnknownMethod, u"no such method"_s);
}

}  // namespace zarvy
