#include "platform/freedesktop/accessibility/FocusFollower.h"

#include <utility>

#include <QDBusPendingCall>
#include <QDBusServiceWatcher>

#include "platform/freedesktop/accessibility/AccessibleObject.h"
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
  for (QTimer* timer : {&m_patience, &m_claimPatience}) {
    timer->setSingleShot(true);
    timer->setInterval(options.patience);
  }
  connect(&m_patience, &QTimer::timeout, this, &FocusFollower::loseHope);
  connect(&m_claimPatience, &QTimer::timeout, this, &FocusFollower::dropClaims);
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
  // Only of names that no connection has any more.
  m_bus.connect(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
                u"NameOwnerChanged"_s, {QString(), QString(), u""_s}, {}, this,
                SLOT(handleLostPeer(QDBusMessage)));
  auto* registry = new QDBusServiceWatcher(accessibilityRegistryName(), m_bus,
                                           QDBusServiceWatcher::WatchForRegistration, this);
  connect(registry, &QDBusServiceWatcher::serviceRegistered, this, &FocusFollower::askForEvents);
}

// Applications send only what the registry has been asked for.
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
  m_search = std::make_unique<FocusSearch>(m_bus, [this](const AccessibleObject& field) {
    consider({.field = field, .isFound = true});
  });
}

void FocusFollower::handleFocus(const QDBusMessage& signal) {
  const AccessibleObject field{.peer = signal.service(), .path = signal.path()};
  if (signal.arguments().value(1).toInt() != 0) {
    consider({.field = field});
  } else if (field == m_field) {
    leave();
  }
}

// Some toolkits say no more than this when the user turns to another application. The field is
// asked nevertheless: with two windows of one application the events come in any order.
void FocusFollower::handleDeactivatedWindow(const QDBusMessage& signal) {
  if (m_field && m_field->peer == signal.service()) lookAgain();
}

// A field that shows its password may begin to hide it under the caret.
void FocusFollower::handleNewRole(const QDBusMessage& signal) {
  const AccessibleObject field{.peer = signal.service(), .path = signal.path()};
  if (field != m_field) return;
  begin();
  askForRole();
}

void FocusFollower::handleLostPeer(const QDBusMessage& signal) {
  const QString peer = signal.arguments().value(0).toString();
  m_processes.remove(peer);
  m_claims.remove(peer);
  if (m_field && m_field->peer == peer) leave();
  endDoubtOfClaims();
}

// It may be a password field that has the keyboard now, and nothing is heard until it is clear who
// it is.
void FocusFollower::consider(const Claim& claim) {
  const QString& peer = claim.field.peer;
  if (const auto known = m_processes.constFind(peer); known != m_processes.cend()) {
    return judge(claim, *known);
  }
  if (!claim.isFound) m_secrecy.doubt();
  const bool isAsked = m_claims.contains(peer);
  m_claims.insert(peer, claim);
  if (isAsked) return;
  if (!m_claimPatience.isActive()) m_claimPatience.start();
  auto question = questionToBus(u"GetConnectionUnixProcessID"_s);
  question << peer;
  askLater(m_bus, question, this,
           [this, peer](const QDBusMessage& answer) { learnProcess(peer, numberIn(answer)); });
}

// A client that is gone by now, and is therefore unknown, has no field.
void FocusFollower::learnProcess(const QString& peer, std::optional<uint> process) {
  if (!m_claims.contains(peer)) return;
  const Claim claim = m_claims.take(peer);
  if (process) {
    m_processes.insert(peer, *process);
    judge(claim, *process);
  }
  endDoubtOfClaims();
}

void FocusFollower::judge(const Claim& claim, qint64 process) {
  if (process == m_ownProcess) return;
  if (m_canHaveKeyboard(process)) return accept(claim, process);
  m_refused = {claim.field, process};
}

// What is typed into a field that was found has been heard all the time, until it says that it is
// secret.
void FocusFollower::accept(const Claim& claim, qint64 process) {
  if (!claim.isFound) m_search.reset();
  m_refused.reset();
  m_field = claim.field;
  m_isSettled = false;
  m_secrecy.setProcess(static_cast<qint32>(process));
  m_detour.follow(m_bus, claim.field.peer, process, this);
  if (!claim.isFound) begin();
  askForRole();
}

void FocusFollower::begin() {
  m_isSettled = false;
  m_secrecy.doubt();
  m_patience.start();
}

// No application is left whose field may have the keyboard beside the one that is known.
void FocusFollower::endDoubtOfClaims() {
  const bool isAwaited = !m_isSettled && m_patience.isActive();
  if (m_claims.isEmpty() && !isAwaited && !m_secrecy.isPasswordField()) m_secrecy.setOpen();
}

void FocusFollower::dropClaims() {
  m_claims.clear();
  endDoubtOfClaims();
}

void FocusFollower::leave() {
  m_search.reset();
  m_field.reset();
  ++m_question;
  settle(false);
}

void FocusFollower::lookAgain() {
  if (m_refused && m_canHaveKeyboard(m_refused->second)) {
    accept({.field = m_refused->first}, m_refused->second);
    return askForFocus();
  }
  if (!m_field || (m_isSettled && !m_secrecy.mustNotBeHeard())) return;
  // The time of a field that has been waited for in vain is not begun again.
  if (m_secrecy.mustNotBeHeard()) m_patience.start();
  m_isSettled = false;
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

// An answer that still comes counts nevertheless.
void FocusFollower::loseHope() {
  m_secrecy.setOpen();
}

}  // namespace zarvy
