#include "e2e/harness/AccessibleText.h"

#include <stdexcept>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QUuid>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString accessibleInterface = u"org.a11y.atspi.Accessible"_s;
const QString textInterface = u"org.a11y.atspi.Text"_s;

constexpr quint32 editableState = 1U << 7;
constexpr quint32 focusedState = 1U << 12;
constexpr int answerDeadline = 10000;  // milliseconds

// The text of `reply`, or an exception that names what was asked.
void requireReply(const QDBusMessage& reply, const QDBusMessage& question) {
  if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) return;
  throw std::runtime_error("no answer to " + question.member().toStdString() + ": " +
                           reply.errorMessage().toStdString());
}

// The index in UTF-16 units of the code point with the index `codePoints`.
qsizetype utf16Index(const QString& text, qsizetype codePoints) {
  qsizetype index = 0;
  for (; codePoints > 0 && index < text.size(); --codePoints) {
    index += text.at(index).isHighSurrogate() ? 2 : 1;
  }
  return index;
}

}  // namespace

AccessibleText::AccessibleText(const std::string& address)
    : m_connectionName(QUuid::createUuid().toString()),
      m_bus(QDBusConnection::connectToBus(QString::fromStdString(address), m_connectionName)) {
  if (!m_bus.isConnected()) throw std::runtime_error("no accessibility bus");
}

AccessibleText::~AccessibleText() {
  QDBusConnection::disconnectFromBus(m_connectionName);
}

bool AccessibleText::find(qint64 processIdentifier) {
  const Object desktop{.bus = u"org.a11y.atspi.Registry"_s,
                       .path = u"/org/a11y/atspi/accessible/root"_s};
  for (const Object& application : childrenOf(desktop)) {
    const QDBusReply<uint> owner = m_bus.interface()->servicePid(application.bus);
    if (!owner.isValid() || owner.value() != processIdentifier) continue;
    const auto text = searchBelow(application, 0);
    if (!text) return false;
    m_text = *text;
    return true;
  }
  return false;
}

EditorState AccessibleText::state(PositionUnit unit) const {
  auto question =
      QDBusMessage::createMethodCall(m_text.bus, m_text.path, textInterface, u"GetText"_s);
  question << 0 << -1;
  const QDBusMessage reply = m_bus.call(question, QDBus::Block, answerDeadline);
  requireReply(reply, question);
  const QString text = reply.arguments().constFirst().toString();
  const int caret = integerProperty(u"CaretOffset"_s);
  return {.text = text, .caret = unit == PositionUnit::utf16 ? caret : utf16Index(text, caret)};
}

void AccessibleText::setText(const QString& text) const {
  auto question = QDBusMessage::createMethodCall(
      m_text.bus, m_text.path, u"org.a11y.atspi.EditableText"_s, u"SetTextContents"_s);
  question << text;
  requireReply(m_bus.call(question, QDBus::Block, answerDeadline), question);
}

QList<AccessibleText::Object> AccessibleText::childrenOf(const Object& object) const {
  const auto question = QDBusMessage::createMethodCall(object.bus, object.path, accessibleInterface,
                                                       u"GetChildren"_s);
  const QDBusMessage reply = m_bus.call(question, QDBus::Block, answerDeadline);
  QList<Object> children;
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return children;
  const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
  argument.beginArray();
  while (!argument.atEnd()) {
    Object child;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> child.bus >> path;
    argument.endStructure();
    child.path = path.path();
    children.append(child);
  }
  argument.endArray();
  return children;
}

bool AccessibleText::isFocusedText(const Object& object) const {
  const auto question =
      QDBusMessage::createMethodCall(object.bus, object.path, accessibleInterface, u"GetState"_s);
  const QDBusReply<QList<uint>> state = m_bus.call(question, QDBus::Block, answerDeadline);
  constexpr quint32 wanted = editableState | focusedState;
  return state.isValid() && !state.value().isEmpty() &&
         (state.value().constFirst() & wanted) == wanted;
}

std::optional<AccessibleText::Object> AccessibleText::searchBelow(const Object& object,
                                                                  int depth) const {
  constexpr int deepest = 20;
  if (isFocusedText(object)) return object;
  if (depth == deepest) return std::nullopt;
  for (const Object& child : childrenOf(object)) {
    if (auto found = searchBelow(child, depth + 1)) return found;
  }
  return std::nullopt;
}

int AccessibleText::integerProperty(const QString& name) const {
  auto question = QDBusMessage::createMethodCall(m_text.bus, m_text.path,
                                                 u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
  question << textInterface << name;
  const QDBusMessage reply = m_bus.call(question, QDBus::Block, answerDeadline);
  requireReply(reply, question);
  return reply.arguments().constFirst().value<QDBusVariant>().variant().toInt();
}

}  // namespace zarvy::e2e
