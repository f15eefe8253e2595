#include "platform/freedesktop/accessibility/FocusFollower.h"

#include <utility>

#include <QDBusPendingCall>
#include <QDBusServiceWatcher>

#include "platform/freedesktop/accessibility/AsyncQuestion.h"
#include "platform/freedesktop/accessibility/FieldSecrecy.h"
#include "platform/freedesktop/accessibility/FocusSearch.h"
#include "platform/freedesktop/accessibility/ToolkitKeyDetour.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr uint passwordTextRole = 40;  // a number of the accessibility protocol

QString objectEvents() {
  return u"org.a11y.atspi.Event.Object"_s;
}

QDBusMessage questionToBus(const QString& member) {
  return QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                        u"org.freedesktop.DBus"_s, member);
}

// Absent where the question has failed or the answer is something else than a number.
std::optional<uint> numberIn(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage) return std::nullopt;
  bool isNumber = false;
  const uint number = answer.arguments().value(0).toUInt(&isNumber);
  return isNumber ? std::optional(number) : std::nullopt;
}

}  // namespace

FocusFollower::FocusFollower(QDBusConnection bus, const Told& told, const Options& options)
    : m_bus(std::move(bus)),
      m_secrecy(told.secrecy),
      m_detour(told.detour),
      m_ownProcess(options.ownProcess),
      m_canHaveKeyboard(options.canHaveKeyboard) {
  m_patience.setSingleShot(true);
  m_patience.setInterval(options.patience);
  connect(&m_patience, &QTimer::timeout, this, &FocusFollower::loseHope);
  listen();
  askForEvents();
  searchFocus();
}

FocusFollower::~FocusFollower() {
  m_secrecy.setOpen();
  m_detour.forget();
}

void FocusFollower::listen() {
  m_bus.connect({}, {}, objectEvents(), u"StateChanged"_s, {u"focused"_s}, {}, this,
                SLOT(handleFocus(QDBusMessage)));
  m_bus.connect({}, {}, objectEvents(), u"PropertyChange"_s, {u"accessible-role"_s}, {}, this,
                SLOT(handleNewRole(QDBusMessage)));
  m_bus.connect({}, {}, u"org.a11y.atspi.Event.Window"_s, u"Deactivate"_s, this,
                SLOT(handleDeactivatedWindow(QDBusMessage)));
  // Only of names that nobody has any more.
  m_bus.connect(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
                u"NameOwnerChanged"_s, {QString(), QString(), u""_s}, {}, this,
                SLOT(handleLostPeer(QDBusMessage)));
  auto* registry = new QDBusServiceWatcher(accessibilityRegistryName(), m_bus,
                                           QDBusServiceWatcher::WatchForRegistration, this);
  connect(registry, &QDBusServiceWatcher::serviceRegistered, this, &FocusFollower::askForEvents);
}

// Applications send only what somebody has asked the registry for.
void FocusFollower::askForEvents() {
  for (const QString& event :
       {u"object:state-changed:focused"_s, u"object:property-change:accessible-role"_s,
        u"window:activate"_s, u"window:deactivate"_s}) {
    auto request =
        QDBusMessage::createMethodCall(accessibilityRegistryName(), u"/org/a11y/atspi/registry"_s,
                                       accessibilityRegistryName(), u"RegisterEvent"_s);
    request << event;
    m_bus.asyncCall(request);
  }
}

void FocusFollower::searchFocus() {
  m_search =
      std::make_unique<FocusSearch>(m_bus, [this](const AccessibleObject& field) { find(field); });
}

void FocusFollower::handleFocus(const QDBusMessage& signal) {
  m_search.reset();
  const AccessibleObject field{.peer = signal.service(), .path = signal.path()};
  if (signal.arguments().value(1).toInt() != 0) {
    enter(field);
  } else if (field == m_field) {
    leave();
  }
}

// Some toolkits say no more than this when the user turns to another application. The field is
// asked all the same: with two windows of one application the order of events is anybody's guess.
void FocusFollower::handleDeactivatedWindow(const QDBusMessage& signal) {
  m_search.reset();
  if (m_field && m_field->peer == signal.service()) lookAgain();
}

// A field that shows its password may begin to hide it under the caret.
void FocusFollower::handleNewRole(const QDBusMessage& signal) {
  const AccessibleObject field{.peer = signal.service(), .path = signal.path()};
  if (field == m_field) enter(field);
}

void FocusFollower::handleLostPeer(const QDBusMessage& signal) {
  if (m_field && m_field->peer == signal.arguments().value(0).toString()) leave();
}

// What an application says of its field counts only once it is known that it can have the keyboard.
void FocusFollower::enter(const AccessibleObject& field) {
  const bool isKnown = m_field && m_field->peer == field.peer && m_peer == field.peer;
  if (!turnTo(field)) return;
  begin();
  if (isKnown) return askForRole();
  askForProcess(Then::role);
}

// What is typed into it has been heard all the time, until it says that it is secret.
void FocusFollower::find(const AccessibleObject& field) {
  if (!turnTo(field)) return;
  m_isSettled = false;
  askForProcess(Then::role);
}

bool FocusFollower::turnTo(const AccessibleObject& field) {
  if (field.peer == m_ownPeer) return false;
  if (!m_field || m_field->peer != field.peer) {
    m_before = m_field;
    m_secrecy.setProcess(0);
  }
  m_field = field;
  return true;
}

void FocusFollower::begin() {
  m_isSettled = false;
  m_secrecy.doubt();
  m_patience.start();
}

void FocusFollower::leave() {
  m_field.reset();
  ++m_question;
  settle(false);
}

void FocusFollower::lookAgain() {
  m_search.reset();
  if (!m_field || (m_isSettled && !m_secrecy.mustNotBeHeard())) return;
  // The time of a field that has been waited for in vain is not begun anew.
  if (m_secrecy.mustNotBeHeard()) m_patience.start();
  m_isSettled = false;
  askForFocus();
}

void FocusFollower::askForProcess(Then then) {
  auto question = questionToBus(u"GetConnectionUnixProcessID"_s);
  question << m_field->peer;
  askLater(m_bus, question, this, [this, field = *m_field, then](const QDBusMessage& answer) {
    learnProcess(field, numberIn(answer).value_or(0), then);
  });
}

void FocusFollower::learnProcess(const AccessibleObject& field, qint64 process, Then then) {
  if (process == m_ownProcess) m_ownPeer = field.peer;
  if (!m_field || m_field->peer != field.peer) return;
  if (process == m_ownProcess || !m_canHaveKeyboard(process)) return comeBack();
  m_secrecy.setProcess(static_cast<qint32>(process));
  m_detour.follow(m_bus, field.peer, process, this);
  m_peer = field.peer;
  if (then == Then::role) askForRole();
}

// What was said last does not count.
void FocusFollower::comeBack() {
  m_field = std::exchange(m_before, std::nullopt);
  if (!m_field) return leave();
  begin();
  askForProcess(Then::nothing);
  askForFocus();
}

// An application that knows no role has no password fields either.
void FocusFollower::askForRole() {
  ask(questionTo(*m_field, u"GetRole"_s),
      [this](const QDBusMessage& answer) { settle(numberIn(answer) == passwordTextRole); });
}

void FocusFollower::askForFocus() {
  ask(questionTo(*m_field, u"GetState"_s), [this](const QDBusMessage& answer) {
    if ((statesIn(answer) & accessiblestate::focused) != 0) {
      askForRole();
    } else {
      leave();
    }
  });
}

void FocusFollower::ask(const QDBusMessage& question, AnswerHandler handler) {
  askLater(m_bus, question, this,
           [this, number = ++m_question, handler = std::move(handler)](const QDBusMessage& answer) {
             if (number == m_question) handler(answer);
           });
}

void FocusFollower::settle(bool isSecret) {
  m_patience.stop();
  m_isSettled = true;
  if (isSecret) {
    m_secrecy.setSecret();
  } else {
    m_secrecy.setOpen();
  }
}

// An answer that still comes counts all the same.
void FocusFollower::loseHope() {
  m_secrecy.setOpen();
}

}  // namespace zarvy
