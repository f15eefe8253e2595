#include "platform/freedesktop/accessibility/AccessibilityBus.h"

#include <algorithm>
#include <utility>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QUuid>

#include "platform/freedesktop/accessibility/AccessibleObject.h"
#include "platform/freedesktop/accessibility/DBusProbe.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// For the last word to the launcher of the bus, so that the end of the program does not hang on it.
constexpr int farewellMilliseconds = 500;

// For a bus to say its first words.
constexpr std::chrono::milliseconds patienceWithBus{500};

constexpr std::chrono::milliseconds longestPauseWithoutBus{60'000};

QString launcherName() {
  return u"org.a11y.Bus"_s;
}

QDBusMessage messageToLauncher(const QString& interface, const QString& member) {
  return QDBusMessage::createMethodCall(launcherName(), u"/org/a11y/bus"_s, interface, member);
}

QDBusMessage aboutIsEnabled(const QString& member) {
  auto message = messageToLauncher(u"org.freedesktop.DBus.Properties"_s, member);
  message << u"org.a11y.Status"_s << u"IsEnabled"_s;
  return message;
}

QDBusMessage setIsEnabled(bool isEnabled) {
  auto message = aboutIsEnabled(u"Set"_s);
  message << QVariant::fromValue(QDBusVariant(isEnabled));
  return message;
}

void disconnectFrom(std::optional<QDBusConnection>& bus) {
  if (!bus) return;
  const QString name = bus->name();
  bus.reset();
  QDBusConnection::disconnectFromBus(name);
}

QString freshName() {
  return u"zarvy-focus-"_s + QUuid::createUuid().toString();
}

}  // namespace

// The timer goes to the thread of this object with it.
AccessibilityBus::AccessibilityBus(const FocusFollower::Told& told, Options options)
    : m_told(told), m_options(std::move(options)), m_later(this) {
  m_later.setSingleShot(true);
  connect(&m_later, &QTimer::timeout, this, &AccessibilityBus::askForAnotherBus);
}

AccessibilityBus::~AccessibilityBus() {
  close();
}

void AccessibilityBus::open() {
  m_session = sessionBus();
  if (!m_session->isConnected()) return;
  auto* watcher = new QDBusServiceWatcher(launcherName(), *m_session,
                                          QDBusServiceWatcher::WatchForRegistration, this);
  connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &AccessibilityBus::findBus);
  findBus();
}

void AccessibilityBus::close() {
  m_later.stop();
  dropBus();
  if (m_session) takeBackAnnouncement();
  disconnectFrom(m_session);
}

void AccessibilityBus::lookAgain() {
  if (m_follower) return m_follower->lookAgain();
  if (!m_address.isEmpty()) followBus();
}

QDBusConnection AccessibilityBus::sessionBus() const {
  if (!m_options.sessionAddress.isEmpty()) {
    return QDBusConnection::connectToBus(m_options.sessionAddress, freshName());
  }
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus, freshName());
}

void AccessibilityBus::findBus() {
  ask(messageToLauncher(launcherName(), u"GetAddress"_s), &AccessibilityBus::useBus);
}

void AccessibilityBus::announceListener() {
  ask(aboutIsEnabled(u"Get"_s), &AccessibilityBus::announceUnlessAnnounced);
}

void AccessibilityBus::announceUnlessAnnounced(const QDBusMessage& isEnabledAnswer) {
  const auto isEnabled = isEnabledAnswer.arguments().value(0).value<QDBusVariant>().variant();
  if (isEnabled.typeId() != QMetaType::Bool || isEnabled.toBool()) return;
  m_hasAnnounced = true;
  m_session->asyncCall(setIsEnabled(true));
}

void AccessibilityBus::takeBackAnnouncement() {
  if (!std::exchange(m_hasAnnounced, false)) return;
  m_session->call(setIsEnabled(false), QDBus::Block, farewellMilliseconds);
}

void AccessibilityBus::useBus(const QDBusMessage& addressAnswer) {
  const QString address = addressAnswer.arguments().value(0).toString();
  if (address.isEmpty()) return;
  if (m_bus && address == m_address) return announceListener();
  dropBus();
  m_address = address;
  followBus();
}

// Toolkits are sent to a bus only once that has answered: it would hold them up as well.
void AccessibilityBus::followBus() {
  const auto answering = partThatAnswers(m_address, patienceWithBus);
  if (!answering) return;
  m_bus = QDBusConnection::connectToBus(*answering, freshName());
  if (!m_bus->isConnected()) return dropBus();
  m_bus->connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                 u"Disconnected"_s, this, SLOT(loseBus()));
  // Ahead of the follower, which asks for the events that the waker hears too.
  if (m_options.wakesBrowsers) m_waker = std::make_unique<BrowserWaker>(*m_bus);
  m_follower = std::make_unique<FocusFollower>(*m_bus, m_told, m_options.follower);
  announceListener();
}

// Applications connect to the next bus by themselves, once a program has asked for it.
void AccessibilityBus::loseBus() {
  dropBus();
  m_later.start(m_options.pauseWithoutBus);
}

void AccessibilityBus::askForAnotherBus() {
  if (m_bus) return;
  findBus();
  m_later.start(std::min(2 * m_later.intervalAsDuration(), longestPauseWithoutBus));
}

void AccessibilityBus::dropBus() {
  m_address.clear();
  m_waker.reset();
  m_follower.reset();
  disconnectFrom(m_bus);
}

void AccessibilityBus::ask(const QDBusMessage& question, AnswerHandler handler) {
  askLater(*m_session, question, this, [this, handler](const QDBusMessage& answer) {
    const bool isAnswered = answer.type() == QDBusMessage::ReplyMessage;
    if (isAnswered && m_session) (this->*handler)(answer);
  });
}

}  // namespace zarvy
